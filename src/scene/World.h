#pragma once

#include "velun_export.h"

namespace Velun {

// Reserved for what a scene knows beyond its tree (physics, environment); a scene
// holds none for now.
class VELUN_EXPORT World {
public:
    virtual ~World();
};

}  // namespace Velun
