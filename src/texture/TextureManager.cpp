#include "texture/TextureManager.h"

namespace Velun {

TextureManager::TextureManager() {}

TextureManager::~TextureManager() {}

}  // namespace Velun
