#include "sound/SoundManager.h"

namespace Velun {

SoundManager::SoundManager() { setSubsystemId(5); }

SoundManager::~SoundManager() {}

std::vector<Process*>* SoundManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
