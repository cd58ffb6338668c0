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
    ~SDLTimer() override;

    bool isInitialized() override;
    // Starts SDL's timer subsystem and fixes the epoch offset; returns true. Does
    // nothing while initialised.
    bool initialize() override;
    // Stops SDL's timer subsystem, and SDL as a whole once no other part of it runs.
    bool shutdown() override;

    bool hasTimestamp() override;
    bool hasHighresCounter() override;
    bool hasTimer() override;

    std::int64_t getTimestampResolution() override;
    std::int64_t getTimerResolution() override;
    double getHighresCounterResolution() override;

    // Milliseconds; never goes down, and keeps counting when SDL's 32-bit tick
    // count wraps (after 49.7 days), provided it is read at least once per wrap.
    std::int64_t getTimestamp() override;
    // Empty: SDLTimer offers no timers.
    Dorvan::SharedPtr<Timer> createTimer() override;
    Dorvan::SharedPtr<Counter> createHighresCounter() override;

private:
    bool mInitialized;
    std::int64_t mTimeOffset;
    std::uint32_t mLastTicks;
    std::int64_t mTickWraps;  // milliseconds added by wraps of the tick count
};

}  // namespace Velun
