#pragma once

#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

// What an InputEvent carries besides its type; one subclass per event type.
class VELUN_EXPORT InputEventInfo {
public:
    virtual ~InputEventInfo() {}
};

// A key went down or up. The symbol keeps the provider's numbering (SDL's key
// symbols for the SDL provider); the engine has no key table of its own.
class VELUN_EXPORT KeyEventInfo : public InputEventInfo {
public:
    enum EventType { KeyPressed = 0, KeyReleased = 1 };

    // Bits of the modifier mask: which modifiers were held with the key.
    static constexpr unsigned short ModNone = 0;
    static constexpr unsigned short ModLeftShift = 0x001;
    static constexpr unsigned short ModRightShift = 0x002;
    static constexpr unsigned short ModLeftCtrl = 0x004;
    static constexpr unsigned short ModRightCtrl = 0x008;
    static constexpr unsigned short ModLeftAlt = 0x010;
    static constexpr unsigned short ModRightAlt = 0x020;
    static constexpr unsigned short ModLeftMeta = 0x040;
    static constexpr unsigned short ModRightMeta = 0x080;
    static constexpr unsigned short ModNumLock = 0x100;
    static constexpr unsigned short ModCapsLock = 0x200;
    static constexpr unsigned short ModMode = 0x400;
    // Either side of a modifier.
    static constexpr unsigned short ModShift = 0x3;
    static constexpr unsigned short ModCtrl = 0xC;
    static constexpr unsigned short ModAlt = 0x30;
    static constexpr unsigned short ModMeta = 0xC0;
    // Shift, Ctrl, Alt, Meta and Caps Lock; Num Lock and Mode are left out.
    static constexpr unsigned short ModKeys = 0x2FF;

    // `unicode` is the character the key typed, 0 when it typed none (a key release,
    // a modifier, a function key).
    KeyEventInfo(EventType type, unsigned char keycode, unsigned short keySymbol, unsigned short modifierMask,
                 unsigned short unicode = 0);
    ~KeyEventInfo() override;

    EventType getEventType() const { return mEventType; }
    // The hardware scan code.
    unsigned char getKeycode() const { return mKeycode; }
    unsigned short getKeySymbol() const { return mKeySymbol; }
    unsigned short getModifierMask() const { return mModifierMask; }
    // UTF-16 code unit of the typed character, or 0.
    unsigned short getUnicode() const { return mUnicode; }

private:
    EventType mEventType;
    unsigned char mKeycode;
    unsigned short mKeySymbol;
    unsigned short mModifierMask;
    unsigned short mUnicode;
};

// A pointer or other axis device moved. Axes 0, 1, 2 are x, y, z; for the mouse
// they are the position in window pixels, and the relative axes the motion since
// the previous move event.
class VELUN_EXPORT MoveEventInfo : public InputEventInfo {
public:
    explicit MoveEventInfo(const Dorvan::Vector<float>& axes);
    MoveEventInfo(const Dorvan::Vector<float>& axes, const Dorvan::Vector<float>& relativeAxes);
    ~MoveEventInfo() override;

    int getAxisCount() const;
    // The index is not checked.
    float getAxis(int index) const;
    // 0.0 for an axis the event does not have.
    float getX() const;
    float getY() const;
    float getZ() const;

    int getRelativeAxisCount() const;
    // The index is not checked.
    float getRelativeAxis(int index) const;
    // 0.0 for an axis the event does not have.
    float getRelativeX() const;
    float getRelativeY() const;
    float getRelativeZ() const;

private:
    Dorvan::Vector<float> mAxes;
    Dorvan::Vector<float> mRelativeAxes;
};

// A mouse or device button went down or up, with the pointer position at that
// moment in window pixels. SDL numbers the mouse buttons 1 left, 2 middle, 3 right,
// 4 and 5 for the wheel.
class VELUN_EXPORT ButtonEventInfo : public InputEventInfo {
public:
    enum EventType { ButtonPressed = 0, ButtonReleased = 1 };

    ButtonEventInfo(EventType type, int buttonNr, int x = 0, int y = 0);
    ~ButtonEventInfo() override;

    EventType getEventType() const { return mEventType; }
    int getButtonNr() const { return mButtonNr; }
    int getX() const { return mX; }
    int getY() const { return mY; }

private:
    EventType mEventType;
    int mButtonNr;
    int mX;
    int mY;
};

// A message of the window system. Width and height are those of a resize, 0 otherwise.
class VELUN_EXPORT SysWMEventInfo : public InputEventInfo {
public:
    enum EventType {
        SysWMQuit = 0,       // the window system asks the application to end
        SysWMExpose = 1,     // the window must be redrawn
        SysWMResize = 2,     // the window has a new size
        SysWMActivate = 3,   // the application gained the input focus
        SysWMDeactivate = 4  // the application lost the input focus
    };

    SysWMEventInfo(EventType type, int width, int height);
    ~SysWMEventInfo() override;

    EventType getEventType() const { return mEventType; }
    int getWidth() const { return mWidth; }
    int getHeight() const { return mHeight; }

private:
    EventType mEventType;
    int mWidth;
    int mHeight;
};

}  // namespace Velun
