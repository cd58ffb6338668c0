#include "texture/TextureLoader.h"

namespace Velun {

TextureLoader::~TextureLoader() {}

}  // namespace Velun
