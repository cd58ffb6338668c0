#pragma once

#include <string>

#include "foundation/SharedPtr.h"

namespace Dorvan {

// A named channel's output, with the five levels.
class Logger {
public:
    virtual ~Logger() {}
    virtual void fatal(const std::string& message) = 0;
    virtual void error(const std::string& message) = 0;
    virtual void warn(const std::string& message) = 0;
    virtual void info(const std::string& message) = 0;
    virtual void debug(const std::string& message) = 0;
};

// An application's logging back end: hands out a logger per channel name.
class LogBackend {
public:
    virtual void initialize() = 0;
    virtual bool isInitialized() = 0;
    virtual SharedPtr<Logger> getLogger(const std::string& name) = 0;

protected:
    ~LogBackend() {}
};

}  // namespace Dorvan
