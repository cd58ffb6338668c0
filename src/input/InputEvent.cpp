#include "input/InputEvent.h"

namespace Velun {

InputEvent::InputEvent(std::int64_t timestamp)
    : Dorvan::Event(timestamp), mWindowId(-1), mEventType(KeyEvent), mInputDevice(0), mEventInfo(0) {}

InputEvent::~InputEvent() { delete mEventInfo; }

void InputEvent::setEventType(EventType type, InputEventInfo& info) {
    mEventType = type;
    if (mEventInfo != &info) {
        delete mEventInfo;
        mEventInfo = &info;
    }
}

KeyEventInfo* InputEvent::getKeyEventInfo() const {
    return mEventType == KeyEvent ? dynamic_cast<KeyEventInfo*>(mEventInfo) : 0;
}

MoveEventInfo* InputEvent::getMoveEventInfo() const {
    return mEventType == MoveEvent ? dynamic_cast<MoveEventInfo*>(mEventInfo) : 0;
}

ButtonEventInfo* InputEvent::getButtonEventInfo() const {
    return mEventType == ButtonEvent ? dynamic_cast<ButtonEventInfo*>(mEventInfo) : 0;
}

SysWMEventInfo* InputEvent::getSysWMEventInfo() const {
    return mEventType == SysWMEvent ? dynamic_cast<SysWMEventInfo*>(mEventInfo) : 0;
}

}  // namespace Velun
