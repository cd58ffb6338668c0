#include "geometry/ObjectLoader.h"

namespace Velun {

ObjectLoader::~ObjectLoader() {}

}  // namespace Velun
