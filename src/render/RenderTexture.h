#pragma once

#include "render/TargetRenderer.h"
#include "velun_export.h"

namespace Velun {

// The place of a surface that is a texture. A back end that renders into textures
// derives from it and supplies engine, context and drawing.
class VELUN_EXPORT RenderTexture : public TargetRenderer {
public:
    RenderTexture(int id, int width, int height);
    ~RenderTexture() override;
};

}  // namespace Velun
