#pragma once

#include "scene/BoundingVolume.h"
#include "velun_export.h"

namespace Velun {

// Reserved volume type without extents of its own yet; it stays abstract, so that
// nothing creates one. Against a frustum it answers -1 from intersects but 0 from
// getFrustrumDistance, so the view filter never culls it.
class VELUN_EXPORT BoundingSphere : public BoundingVolume {
public:
    ~BoundingSphere() override;

    using BoundingVolume::intersects;
    int intersects(Frustrum const& frustum) const override;
    float getFrustrumDistance(Frustrum const& frustum) const override;
    int getVolumeType() const override;
};

}  // namespace Velun
