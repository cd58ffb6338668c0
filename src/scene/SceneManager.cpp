#include "scene/SceneManager.h"

namespace Velun {

SceneManager::SceneManager() { setSubsystemId(3); }

SceneManager::~SceneManager() {}

std::vector<Process*>* SceneManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
