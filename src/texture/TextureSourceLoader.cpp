#include "texture/TextureSourceLoader.h"

namespace Velun {

TextureSourceLoader::~TextureSourceLoader() {}

}  // namespace Velun
