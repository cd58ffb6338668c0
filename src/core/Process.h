#pragma once

#include <cstdint>

#include "velun_export.h"

namespace Velun {

// One piece of per-frame work inside a subsystem. `timestamp` is the engine time in
// milliseconds; whatever needs a delta keeps the previous value itself.
class VELUN_EXPORT Process {
public:
    virtual int run(std::int64_t timestamp) = 0;
    virtual ~Process() {}
};

}  // namespace Velun
