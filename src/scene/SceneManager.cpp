#include "scene/SceneManager.h"

namespace Velun {

SceneManager::SceneManager() : mLastNodeId(0) { setSubsystemId(3); }

SceneManager::~SceneManager() {}

std::uint64_t SceneManager::createNodeId() { return ++mLastNodeId; }

std::vector<Process*>* SceneManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
