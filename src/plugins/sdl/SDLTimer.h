#pragma once

#include <cstdint>

#include "core/TimerPlugin.h"
#include "velun_export.h"

namespace Velun {

// Timestamps from SDL's millisecond tick count, and high-resolution counters over
// the system's monotonic clock. A timestamp is wall-clock time in milliseconds
// since the Unix epoch, read to the second at initialisation and advanced by the
// tick count from then on, so later changes of the system clock do not move it.
class VELUN_EXPORT SDLTimer : public TimerPlugin {
public:
    SDLTimer();
    // Shuts SDL's timer down if it is still initialised.
    virtual ~SDLTimer();

    virtual bool isInitialized();
    // Starts SDL's timer subsystem and fixes the epoch offset; returns true. Does
    // nothing while initialised.
    virtual bool initialize();
    // Stops SDL's timer subsystem, and SDL as a whole once no other part of it runs.
    virtual bool shutdown();

    virtual bool hasTimestamp();
    virtual bool hasHighresCounter();
    virtual bool hasTimer();

    virtual std::int64_t getTimestampResolution();
    virtual std::int64_t getTimerResolution();
    virtual double getHighresCounterResolution();

    // Milliseconds; never goes down, and keeps counting when SDL's 32-bit tick
    // count wraps (after 49.7 days), provided it is read at least once per wrap.
    virtual std::int64_t getTimestamp();
    // Empty: SDLTimer offers no timers.
    virtual Dorvan::SharedPtr<Timer> createTimer();
    virtual Dorvan::SharedPtr<Counter> createHighresCounter();

private:
    bool mInitialized;
    std::int64_t mTimeOffset;
    std::uint32_t mLastTicks;
    std::int64_t mTickWraps;  // milliseconds added by wraps of the tick count
};

}  // namespace Velun
