#include "texture/CubeMap.h"

namespace Velun {

CubeMap::CubeMap() : Texture(3, 6) {}

CubeMap::~CubeMap() {}

}  // namespace Velun
