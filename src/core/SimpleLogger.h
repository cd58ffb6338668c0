#pragma once

#include "foundation/Logger.h"
#include "velun_export.h"

namespace Velun {

// Writes each message, undecorated, as one flushed line on standard error.
class VELUN_EXPORT SimpleLogger : public Dorvan::Logger {
public:
    void fatal(const std::string& message) override;
    void error(const std::string& message) override;
    void warn(const std::string& message) override;
    void info(const std::string& message) override;
    void debug(const std::string& message) override;
};

}  // namespace Velun
