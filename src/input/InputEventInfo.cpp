#include "input/InputEventInfo.h"

namespace Velun {

namespace {

float axisOrZero(const Dorvan::Vector<float>& axes, unsigned int index) {
    return index < axes.size() ? axes.get(index) : 0.0f;
}

}  // namespace

KeyEventInfo::KeyEventInfo(EventType type, unsigned char keycode, unsigned short keySymbol,
                           unsigned short modifierMask, unsigned short unicode)
    : mEventType(type), mKeycode(keycode), mKeySymbol(keySymbol), mModifierMask(modifierMask),
      mUnicode(unicode) {}

KeyEventInfo::~KeyEventInfo() {}

MoveEventInfo::MoveEventInfo(const Dorvan::Vector<float>& axes) : mAxes(axes) {}

MoveEventInfo::MoveEventInfo(const Dorvan::Vector<float>& axes, const Dorvan::Vector<float>& relativeAxes)
    : mAxes(axes), mRelativeAxes(relativeAxes) {}

MoveEventInfo::~MoveEventInfo() {}

int MoveEventInfo::getAxisCount() const { return static_cast<int>(mAxes.size()); }

float MoveEventInfo::getAxis(int index) const { return mAxes.get(static_cast<unsigned int>(index)); }

float MoveEventInfo::getX() const { return axisOrZero(mAxes, 0); }

float MoveEventInfo::getY() const { return axisOrZero(mAxes, 1); }

float MoveEventInfo::getZ() const { return axisOrZero(mAxes, 2); }

int MoveEventInfo::getRelativeAxisCount() const { return static_cast<int>(mRelativeAxes.size()); }

float MoveEventInfo::getRelativeAxis(int index) const {
    return mRelativeAxes.get(static_cast<unsigned int>(index));
}

float MoveEventInfo::getRelativeX() const { return axisOrZero(mRelativeAxes, 0); }

float MoveEventInfo::getRelativeY() const { return axisOrZero(mRelativeAxes, 1); }

float MoveEventInfo::getRelativeZ() const { return axisOrZero(mRelativeAxes, 2); }

ButtonEventInfo::ButtonEventInfo(EventType type, int buttonNr, int x, int y)
    : mEventType(type), mButtonNr(buttonNr), mX(x), mY(y) {}

ButtonEventInfo::~ButtonEventInfo() {}

SysWMEventInfo::SysWMEventInfo(EventType type, int width, int height)
    : mEventType(type), mWidth(width), mHeight(height) {}

SysWMEventInfo::~SysWMEventInfo() {}

}  // namespace Velun
