#include "texture/Texture1D.h"

namespace Velun {

Texture1D::Texture1D() : Texture(1, 1) {}

Texture1D::~Texture1D() {}

}  // namespace Velun
