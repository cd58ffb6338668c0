#include "input/InputProcessor.h"

#include "core/VelunCore.h"
#include "input/InputManager.h"

namespace Velun {

InputProcessor::InputProcessor(int processorId)
    : mEnabled(true), mProcessorId(processorId), mRegisteredWith(nullptr) {
    if (mProcessorId < 0)
        mProcessorId = VelunCore::getSingleton().getInputManager().createProcessorId();
}

InputProcessor::~InputProcessor() {
    if (mRegisteredWith)
        mRegisteredWith->unregisterInputProcessor(*this);
}

int InputProcessor::getProcessorId() { return mProcessorId; }

bool InputProcessor::isEnabled() { return mEnabled; }

void InputProcessor::setEnabled(bool enabled) { mEnabled = enabled; }

}  // namespace Velun
