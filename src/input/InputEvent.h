#pragma once

#include <cstdint>

#include "foundation/Event.h"
#include "input/InputEventInfo.h"
#include "velun_export.h"

namespace Velun {

class InputDevice;

// One input event as the processors see it: a type, and an info object of the
// class that belongs to the type. The event lives only during the call that hands
// it to a processor; keep copies of its values, not of the event or its info.
class VELUN_EXPORT InputEvent : public Dorvan::Event {
public:
    enum EventType { KeyEvent = 0, MoveEvent = 1, ButtonEvent = 2, SysWMEvent = 3 };

    // An event with no info yet, no window (-1) and no device.
    explicit InputEvent(std::int64_t timestamp);
    ~InputEvent() override;

    EventType getEventType() const { return mEventType; }
    // The window the event belongs to, -1 when none is known.
    int getWindowId() const { return mWindowId; }
    // The device of the event, or null. Not owned.
    InputDevice* getInputDevice() const { return mInputDevice; }
    void setWindowId(int windowId) { mWindowId = windowId; }
    void setInputDevice(InputDevice* device) { mInputDevice = device; }

    // Sets the type and takes ownership of `info`, which must come from `new` and
    // be of the type's info class (an accessor gives null for one that is not);
    // the earlier info is deleted.
    void setEventType(EventType type, InputEventInfo& info);

    // The info, when the event has the matching type; null otherwise.
    KeyEventInfo* getKeyEventInfo() const;
    MoveEventInfo* getMoveEventInfo() const;
    ButtonEventInfo* getButtonEventInfo() const;
    SysWMEventInfo* getSysWMEventInfo() const;

private:
    InputEvent(const InputEvent&) = delete;
    InputEvent& operator=(const InputEvent&) = delete;

    int mWindowId;
    EventType mEventType;
    InputDevice* mInputDevice;
    InputEventInfo* mEventInfo;
};

}  // namespace Velun
