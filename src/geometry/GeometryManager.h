#pragma once

#include "velun_export.h"

namespace Velun {

// Keeps named geometries.
class VELUN_EXPORT GeometryManager {
public:
    GeometryManager();
    virtual ~GeometryManager();
};

}  // namespace Velun
