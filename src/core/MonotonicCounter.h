#pragma once

#include <chrono>

#include "core/Counter.h"
#include "velun_export.h"

namespace Velun {

// Counter over the system's monotonic clock (std::chrono::steady_clock), which
// does not jump when the wall clock is set. The constructor takes a first reading,
// so an `update` before `start` measures from construction.
class VELUN_EXPORT MonotonicCounter : public Counter {
public:
    MonotonicCounter();
    ~MonotonicCounter() override;

    void start() override;
    void update() override;
    void stop() override;
    double getElapsedSeconds() override;

private:
    std::chrono::steady_clock::time_point mLastCount;
    double mElapsed;
};

}  // namespace Velun
