#pragma once

#include <cstdint>

#include "core/Counter.h"
#include "core/Timer.h"
#include "foundation/SharedPtr.h"
#include "velun_export.h"

namespace Velun {

// A source of time for TimerManager. A plug-in states which of the three services
// it offers (timestamps, high-resolution counters, timers); the manager uses the
// first registered plug-in that offers a service. Timestamps are milliseconds.
class VELUN_EXPORT TimerPlugin {
public:
    virtual ~TimerPlugin() {}

    virtual bool isInitialized() = 0;
    // Called by TimerManager on registration unless the plug-in is initialised
    // already; a plug-in that returns false is not registered.
    virtual bool initialize() = 0;
    // Releases what `initialize` acquired; afterwards isInitialized is false.
    virtual bool shutdown() = 0;

    virtual bool hasTimestamp() = 0;
    virtual bool hasHighresCounter() = 0;
    virtual bool hasTimer() = 0;

    virtual std::int64_t getTimestampResolution() = 0;
    virtual std::int64_t getTimerResolution() = 0;
    virtual double getHighresCounterResolution() = 0;

    virtual std::int64_t getTimestamp() = 0;
    virtual Dorvan::SharedPtr<Timer> createTimer() = 0;
    virtual Dorvan::SharedPtr<Counter> createHighresCounter() = 0;
};

}  // namespace Velun
