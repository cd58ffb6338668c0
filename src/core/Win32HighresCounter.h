#pragma once

#ifdef _WIN32

#include <cstdint>

#include "core/Counter.h"
#include "velun_export.h"

namespace Velun {

// Counter over the Windows performance counter. The constructor takes a first
// reading, so an `update` before `start` measures from construction.
class VELUN_EXPORT Win32HighresCounter : public Counter {
public:
    Win32HighresCounter();
    virtual ~Win32HighresCounter();

    virtual void start();
    virtual void update();
    virtual void stop();
    virtual double getElapsedSeconds();

private:
    std::int64_t mLastCount;
    std::int64_t mFrequency;  // counts per second
    double mElapsed;
};

}  // namespace Velun

#endif
