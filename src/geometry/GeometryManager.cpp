#include "geometry/GeometryManager.h"

namespace Velun {

GeometryManager::GeometryManager() {}

GeometryManager::~GeometryManager() {}

}  // namespace Velun
