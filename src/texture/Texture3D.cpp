#include "texture/Texture3D.h"

namespace Velun {

Texture3D::Texture3D() : Texture(3, 1) {}

Texture3D::~Texture3D() {}

}  // namespace Velun
