#pragma once

// A log back end that drops every line: fuzz inputs are nearly all broken files, and
// their error lines would only slow the run down.

#include "core/LogManager.h"
#include "core/VelunCore.h"
#include "foundation/Logger.h"

namespace fuzzing {

class QuietLogger : public Dorvan::Logger {
public:
    void fatal(const std::string&) override {}
    void error(const std::string&) override {}
    void warn(const std::string&) override {}
    void info(const std::string&) override {}
    void debug(const std::string&) override {}
};

class QuietBackend : public Dorvan::LogBackend {
public:
    void initialize() override {}
    bool isInitialized() override { return true; }
    Dorvan::SharedPtr<Dorvan::Logger> getLogger(const std::string&) override { return mLogger; }

private:
    Dorvan::SharedPtr<Dorvan::Logger> mLogger{new QuietLogger()};
};

// Starts the engine once for the whole run, with a quiet log.
inline void startQuietEngine() {
    static QuietBackend backend;
    Velun::VelunCore& core = Velun::VelunCore::getSingleton();
    core.startup();
    core.getLogManager().registerBackend(backend);
}

}  // namespace fuzzing
