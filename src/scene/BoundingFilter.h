#pragma once

#include <vector>

#include "scene/BoundingVolume.h"
#include "scene/Matrix.h"
#include "scene/Point.h"
#include "scene/Traverser.h"
#include "velun_export.h"

namespace Velun {

class Drawable;

// A filter for spatial questions: added to a Traverser, it lets through only the nodes
// whose world volume contains a point (what lies under the player) or touches a volume
// (a trigger box, a blast radius), after an update pass has placed the volumes. A
// skipped node is left out with its subtree. The volume, once set, wins over the point.
class VELUN_EXPORT BoundingFilter : public Traverser::Filter {
public:
    // Tests the origin.
    BoundingFilter();
    // The volume is not copied: it must outlive the filter's walks, so a temporary is
    // refused.
    explicit BoundingFilter(BoundingVolume const& volume);
    BoundingFilter(BoundingVolume const&&) = delete;
    explicit BoundingFilter(Point const& point);
    ~BoundingFilter() override;

    BoundingFilter(BoundingFilter const&) = default;
    BoundingFilter& operator=(BoundingFilter const&) = default;

    // A volume in world coordinates.
    void setBoundingVolume(BoundingVolume const& volume);
    void setBoundingVolume(BoundingVolume const&&) = delete;
    // A volume placed in the world by `toWorld`, e.g. a trigger box in its owner's frame.
    void setBoundingVolume(BoundingVolume const& volume, Dorvan::Matrix<float, 4> const& toWorld);
    void setBoundingVolume(BoundingVolume const&&, Dorvan::Matrix<float, 4> const&) = delete;
    // Takes effect only while no volume is set.
    void setPoint(Point const& point) { mPoint = point; }
    // Also tests a drawable's own local volume, which is tighter than its world box
    // when the drawable is rotated.
    void setTestDrawableVolumes(bool test) { mTestDrawableVolumes = test; }

    Traverser::StatusResult filter(Node& node) override;

private:
    bool touchesDrawableVolume(Node& node) const;

    Point mPoint;
    BoundingVolume const* mVolume;
    Dorvan::Matrix<float, 4> mMatrix;
    bool mUseMatrix;
    bool mTestDrawableVolumes;
};

// The drawables at or below `root` that `filter` lets through (the root is tested as
// well), in walking order: e.g. collectDrawables(root, BoundingFilter(point)).
VELUN_EXPORT std::vector<Drawable*> collectDrawables(Node& root, BoundingFilter const& filter);

}  // namespace Velun
