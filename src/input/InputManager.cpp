#include "input/InputManager.h"

namespace Velun {

InputManager::InputManager() { setSubsystemId(1); }

InputManager::~InputManager() {}

std::vector<Process*>* InputManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
