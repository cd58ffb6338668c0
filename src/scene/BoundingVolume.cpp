#include "scene/BoundingVolume.h"

namespace Velun {

BoundingVolume::~BoundingVolume() {}

float BoundingVolume::getCoverage(Point const& point) const { return contains(point) ? 1.0f : 0.0f; }

}  // namespace Velun
