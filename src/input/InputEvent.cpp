#include "input/InputEvent.h"

namespace Velun {

InputEvent::InputEvent(std::int64_t timestamp)
    : Dorvan::Event(timestamp), mWindowId(-1), mEventType(KeyEvent), mInputDevice(nullptr),
      mEventInfo(nullptr) {}

InputEvent::~InputEvent() { delete mEventInfo; }

void InputEvent::setEventType(EventType type, InputEventInfo& info) {
    mEventType = type;
    if (mEventInfo != &info) {
        delete mEventInfo;
        mEventInfo = &info;
    }
}

KeyEventInfo* InputEvent::getKeyEventInfo() const {
    return mEventType == KeyEvent ? dynamic_cast<KeyEventInfo*>(mEventInfo) : nullptr;
}

MoveEventInfo* InputEvent::getMoveEventInfo() const {
    return mEventType == MoveEvent ? dynamic_cast<MoveEventInfo*>(mEventInfo) : nullptr;
}

ButtonEventInfo* InputEvent::getButtonEventInfo() const {
    return mEventType == ButtonEvent ? dynamic_cast<ButtonEventInfo*>(mEventInfo) : nullptr;
}

SysWMEventInfo* InputEvent::getSysWMEventInfo() const {
    return mEventType == SysWMEvent ? dynamic_cast<SysWMEventInfo*>(mEventInfo) : nullptr;
}

}  // namespace Velun
