#include "scene/BoundingSphere.h"

namespace Velun {

BoundingSphere::~BoundingSphere() {}

int BoundingSphere::intersects(Frustrum const&) const { return -1; }

float BoundingSphere::getFrustrumDistance(Frustrum const&) const { return 0.0f; }

int BoundingSphere::getVolumeType() const { return VolumeSphere; }

}  // namespace Velun
