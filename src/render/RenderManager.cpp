#include "render/RenderManager.h"

namespace Velun {

RenderManager::RenderManager() { setSubsystemId(6); }

RenderManager::~RenderManager() {}

std::vector<Process*>* RenderManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
