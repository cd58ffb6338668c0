#pragma once

#include "texture/Texture.h"
#include "velun_export.h"

namespace Velun {

// Base of cube map textures: six images addressed by three coordinate axes. The engine
// brings no concrete form: a subclass supplies getTextureType (TypeCubeMap), hasChanged
// and getTextureSource (one source per face index 0 to 5).
class VELUN_EXPORT CubeMap : public Texture {
public:
    ~CubeMap() override;

protected:
    CubeMap();
};

}  // namespace Velun
