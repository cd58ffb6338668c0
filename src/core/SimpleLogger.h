#pragma once

#include "foundation/Logger.h"
#include "velun_export.h"

namespace Velun {

// Writes each message, undecorated, as one flushed line on standard error.
class VELUN_EXPORT SimpleLogger : public Dorvan::Logger {
public:
    virtual void fatal(const std::string& message);
    virtual void error(const std::string& message);
    virtual void warn(const std::string& message);
    virtual void info(const std::string& message);
    virtual void debug(const std::string& message);
};

}  // namespace Velun
