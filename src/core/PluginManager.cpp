#include "core/PluginManager.h"

namespace Velun {

PluginManager::PluginManager() {}

PluginManager::~PluginManager() {}

void PluginManager::loadPlugins(const std::string&) {}

}  // namespace Velun
