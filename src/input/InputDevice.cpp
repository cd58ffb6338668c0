#include "input/InputDevice.h"

#include "core/VelunCore.h"
#include "input/InputManager.h"

namespace Velun {

InputDevice::InputDevice(DeviceClass deviceClass, int deviceNr, int deviceId)
    : mEnabled(true), mDeviceClass(deviceClass), mDeviceNr(deviceNr), mDeviceId(deviceId) {
    if (mDeviceId < 0)
        mDeviceId = VelunCore::getSingleton().getInputManager().createDeviceId();
}

InputDevice::~InputDevice() {}

int InputDevice::getDeviceId() { return mDeviceId; }

InputDevice::DeviceClass InputDevice::getDeviceClass() { return mDeviceClass; }

int InputDevice::getDeviceNr() { return mDeviceNr; }

bool InputDevice::isEnabled() { return mEnabled; }

void InputDevice::setEnabled(bool enabled) { mEnabled = enabled; }

}  // namespace Velun
