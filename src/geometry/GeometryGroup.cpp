#include "geometry/GeometryGroup.h"

namespace Velun {

GeometryGroup::~GeometryGroup() {}

}  // namespace Velun
