#include "texture/TextureSource.h"

namespace Velun {

TextureSource::~TextureSource() {}

}  // namespace Velun
