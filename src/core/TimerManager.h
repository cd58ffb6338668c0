#pragma once

#include <cstdint>

#include "velun_export.h"

namespace Velun {

// The engine's clock: timestamps in milliseconds, from the registered timer plug-in.
class VELUN_EXPORT TimerManager {
public:
    TimerManager();
    virtual ~TimerManager();

    // The engine time in milliseconds; 0 while no timer plug-in is registered.
    std::int64_t getTimestamp();
};

}  // namespace Velun
