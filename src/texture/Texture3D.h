#pragma once

#include "texture/Texture.h"
#include "velun_export.h"

namespace Velun {

// Base of a three-dimensional texture. The engine brings no concrete form: a subclass supplies
// getTextureType, hasChanged and getTextureSource.
class VELUN_EXPORT Texture3D : public Texture {
public:
    ~Texture3D() override;

protected:
    Texture3D();
};

}  // namespace Velun
