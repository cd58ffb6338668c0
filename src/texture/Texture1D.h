#pragma once

#include "texture/Texture.h"
#include "velun_export.h"

namespace Velun {

// Base of a one-dimensional texture. The engine brings no concrete form: a subclass supplies
// getTextureType, hasChanged and getTextureSource.
class VELUN_EXPORT Texture1D : public Texture {
public:
    ~Texture1D() override;

protected:
    Texture1D();
};

}  // namespace Velun
