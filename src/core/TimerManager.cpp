#include "core/TimerManager.h"

namespace Velun {

TimerManager::TimerManager() {}

TimerManager::~TimerManager() {}

std::int64_t TimerManager::getTimestamp() { return 0; }

}  // namespace Velun
