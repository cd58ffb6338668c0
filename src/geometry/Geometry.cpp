#include "geometry/Geometry.h"

namespace Velun {

Geometry::~Geometry() {}

}  // namespace Velun
