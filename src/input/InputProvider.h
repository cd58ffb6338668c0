#pragma once

#include <cstdint>
#include <map>

#include "velun_export.h"

namespace Velun {

class InputDevice;
class InputEvent;
class InputManager;

// A source of input events, such as a window system's event queue. A provider that
// needs polling is polled once per pass of the main loop while it is registered and
// enabled, and hands its events on with sendEvent. Create providers between the
// engine's startup and shutdown; destroying a registered one unregisters it.
class VELUN_EXPORT InputProvider {
public:
    // A negative id takes the next one from InputManager::createProviderId.
    explicit InputProvider(int providerId = -1);
    virtual ~InputProvider();

    virtual int getProviderId();
    virtual bool isEnabled();
    virtual void setEnabled(bool enabled);
    virtual bool needsPolling() = 0;
    // Reads what arrived since the last poll; `timestamp` is the engine time of this pass.
    virtual void pollEvents(std::int64_t timestamp);
    // The devices the provider named, by id; not owned.
    virtual std::map<int, InputDevice*> getProvidedDevices();
    // The device with this id; an unknown id gives null and enters an empty entry.
    virtual InputDevice* getDevice(int id);

protected:
    // Hands the event to the InputManager's processors.
    void sendEvent(InputEvent& event);
    // Enters the device under its id; not owned.
    void registerDevice(InputDevice& device);

private:
    InputProvider(const InputProvider&) = delete;
    InputProvider& operator=(const InputProvider&) = delete;

    friend class InputManager;

    bool mEnabled;
    int mProviderId;
    std::map<int, InputDevice*> mDevices;
    InputManager* mInputManager;    // the engine's, at construction
    InputManager* mRegisteredWith;  // set while registered
};

}  // namespace Velun
