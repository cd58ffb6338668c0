#include "input/InputProvider.h"

#include "core/VelunCore.h"
#include "input/InputDevice.h"
#include "input/InputManager.h"

namespace Velun {

InputProvider::InputProvider(int providerId)
    : mEnabled(true), mProviderId(providerId), mInputManager(&VelunCore::getSingleton().getInputManager()),
      mRegisteredWith(nullptr) {
    if (mProviderId < 0)
        mProviderId = mInputManager->createProviderId();
}

InputProvider::~InputProvider() {
    if (mRegisteredWith)
        mRegisteredWith->unregisterInputProvider(*this);
}

int InputProvider::getProviderId() { return mProviderId; }

bool InputProvider::isEnabled() { return mEnabled; }

void InputProvider::setEnabled(bool enabled) { mEnabled = enabled; }

void InputProvider::pollEvents(std::int64_t) {}

std::map<int, InputDevice*> InputProvider::getProvidedDevices() { return mDevices; }

InputDevice* InputProvider::getDevice(int id) { return mDevices[id]; }

void InputProvider::sendEvent(InputEvent& event) {
    // After shutdown the manager is gone; the event then has nobody to go to.
    if (mInputManager == VelunCore::getSingleton().findInputManager())
        mInputManager->triggerInputEvent(event);
}

void InputProvider::registerDevice(InputDevice& device) { mDevices[device.getDeviceId()] = &device; }

}  // namespace Velun
