#pragma once

#include "velun_export.h"

namespace Velun {

// A device that a provider can name in its events. A new device is enabled.
class VELUN_EXPORT InputDevice {
public:
    enum DeviceClass { DeviceKeyboard = 0, DeviceMouse = 1, DeviceJoystick = 2, DeviceOther = 3 };

    // A negative id takes the next one from InputManager::createDeviceId, which
    // needs a started engine.
    InputDevice(DeviceClass deviceClass, int deviceNr, int deviceId = -1);
    virtual ~InputDevice();

    virtual int getDeviceId();
    virtual DeviceClass getDeviceClass();
    // Number of the device among those of its class.
    virtual int getDeviceNr();
    virtual bool isEnabled();
    virtual void setEnabled(bool enabled);

private:
    bool mEnabled;
    DeviceClass mDeviceClass;
    int mDeviceNr;
    int mDeviceId;
};

}  // namespace Velun
