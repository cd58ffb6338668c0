#include "core/ResourceLoader.h"

namespace Velun {

ResourceLoader::~ResourceLoader() {}

}  // namespace Velun
