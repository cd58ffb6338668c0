#include "logic/EventManager.h"

namespace Velun {

EventManager::EventManager() { setSubsystemId(2); }

EventManager::~EventManager() {}

std::vector<Process*>* EventManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
