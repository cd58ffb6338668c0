#pragma once

#include "velun_export.h"

namespace Velun {

// A stopwatch. `start` takes a reading; each `update` (or `stop`) takes the next one,
// and getElapsedSeconds gives the time between the last two readings, not the sum
// since `start`.
class VELUN_EXPORT Counter {
public:
    virtual ~Counter() {}
    virtual void start() = 0;
    virtual void update() = 0;
    virtual void stop() = 0;
    virtual double getElapsedSeconds() = 0;
};

}  // namespace Velun
