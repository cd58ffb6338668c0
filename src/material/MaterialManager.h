#pragma once

#include "velun_export.h"

namespace Velun {

// Keeps the materials of the engine.
class VELUN_EXPORT MaterialManager {
public:
    MaterialManager();
    virtual ~MaterialManager();
};

}  // namespace Velun
