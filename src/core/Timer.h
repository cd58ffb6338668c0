#pragma once

#include "velun_export.h"

namespace Velun {

// A timer service that a TimerPlugin may offer. No built-in plug-in offers one
// yet, so TimerManager::createTimer gives an empty pointer.
class VELUN_EXPORT Timer {
public:
    virtual ~Timer() {}
};

}  // namespace Velun
