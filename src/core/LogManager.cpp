#include "core/LogManager.h"

#include "core/SimpleLogger.h"

namespace Velun {

LogManager::LogManager() : mBackend(nullptr), mDefaultLogger(new SimpleLogger()) {}

LogManager::~LogManager() {}

void LogManager::registerBackend(Dorvan::LogBackend& backend) {
    if (!backend.isInitialized())
        backend.initialize();
    mBackend = &backend;
}

Dorvan::SharedPtr<Dorvan::Logger> LogManager::getLogger(const std::string& name) {
    if (mBackend)
        return mBackend->getLogger(name);
    return mDefaultLogger;
}

}  // namespace Velun
