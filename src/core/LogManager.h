#pragma once

#include <string>

#include "foundation/Logger.h"
#include "foundation/SharedPtr.h"
#include "velun_export.h"

namespace Velun {

// Hands out loggers by channel name: those of an installed back end, or else one
// logger that writes plain lines to standard error.
class VELUN_EXPORT LogManager {
public:
    LogManager();
    ~LogManager();

    // Installs the back end (initialising it if needed), replacing an earlier one. Not owned.
    void registerBackend(Dorvan::LogBackend& backend);
    Dorvan::SharedPtr<Dorvan::Logger> getLogger(const std::string& name);

private:
    Dorvan::LogBackend* mBackend;
    Dorvan::SharedPtr<Dorvan::Logger> mDefaultLogger;
};

}  // namespace Velun
