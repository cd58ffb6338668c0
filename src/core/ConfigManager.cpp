#include "core/ConfigManager.h"

namespace Velun {

ConfigManager::ConfigManager() {}

ConfigManager::~ConfigManager() {}

int ConfigManager::parseArguments(const Dorvan::Vector<std::string>&, bool) { return 0; }

void ConfigManager::clearArguments() {}

void ConfigManager::setConfigurationFilename(const std::string&) {}

bool ConfigManager::loadConfiguration(const std::string&) { return true; }

}  // namespace Velun
