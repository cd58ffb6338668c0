#include "render/RenderTexture.h"

namespace Velun {

RenderTexture::RenderTexture(int id, int width, int height) : TargetRenderer(id, width, height) {}

RenderTexture::~RenderTexture() {}

}  // namespace Velun
