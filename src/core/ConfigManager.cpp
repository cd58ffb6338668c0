#include "core/ConfigManager.h"

namespace Velun {

ConfigManager::ConfigManager() {}

ConfigManager::~ConfigManager() {}

int ConfigManager::parseArguments(const Dorvan::Vector<std::string>& arguments, bool) {
    for (unsigned int i = 0; i < arguments.size(); ++i)
        mArguments.add(arguments.get(i));
    return 0;
}

void ConfigManager::clearArguments() { mArguments.clear(); }

unsigned int ConfigManager::getArgumentCount() const { return mArguments.size(); }

std::string ConfigManager::getArgument(unsigned int position) const { return mArguments.get(position); }

void ConfigManager::setConfigurationFilename(const std::string& filename) {
    mConfigurationFilename = filename;
}

const std::string& ConfigManager::getConfigurationFilename() const { return mConfigurationFilename; }

bool ConfigManager::loadConfiguration(const std::string& filename) {
    mConfigurationFilename = filename;
    return true;
}

}  // namespace Velun
