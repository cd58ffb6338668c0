#pragma once

#include "velun_export.h"

namespace Velun {

// Caches textures and texture sources by name and keeps their loaders.
class VELUN_EXPORT TextureManager {
public:
    TextureManager();
    virtual ~TextureManager();
};

}  // namespace Velun
