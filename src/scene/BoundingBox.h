#pragma once

#include "scene/BoundingVolume.h"
#include "velun_export.h"

namespace Velun {

// Axis-aligned box, the engine's working volume. While bounded, mMin is not above
// mMax on any axis; setEmpty and setInfinite change the state only and leave the
// corners as they are.
class VELUN_EXPORT BoundingBox : public BoundingVolume {
public:
    // An empty box.
    BoundingBox();
    // The box around both points.
    BoundingBox(Point const& a, Point const& b);
    virtual ~BoundingBox();

    virtual void setEmpty() { mState = StateEmpty; }
    virtual void setInfinite() { mState = StateInfinite; }
    virtual int getState() const { return mState; }

    // Exact tests with a transformation are not available: -1 when this box is empty,
    // otherwise 1.
    virtual int intersects(BoundingVolume const& other, Dorvan::Matrix<float, 4> const& otherToThis) const;
    virtual int intersects(BoundingVolume const& other) const;
    virtual int intersects(Frustrum const& frustum) const;
    virtual bool contains(Point const& point) const;

    // -1 outside, 0 for an infinite box; otherwise the largest distance of a corner
    // in front of the near plane.
    virtual float getFrustrumDistance(Frustrum const& frustum) const;

    // Merging with a transformation gives the axis-aligned box around the eight
    // transformed corners of `other`.
    virtual bool merge(BoundingVolume const& other, Dorvan::Matrix<float, 4> const& transform);
    virtual bool merge(BoundingVolume const& other);
    virtual bool merge(Point const& point);

    virtual BoundingVolume* transformed(Dorvan::Matrix<float, 4> const& transform) const;

    virtual int getVolumeType() const { return VolumeBox; }

    Point const& getMin() const { return mMin; }
    Point const& getMax() const { return mMax; }

    // The same as the virtual merges for a box known to be one; the update pass calls
    // these without a virtual dispatch.
    bool mergeBox(BoundingBox const& other);
    bool mergeBox(BoundingBox const& other, Dorvan::Matrix<float, 4> const& transform);

    // Corner i of eight, with x as the slowest axis: (min x, min y, min z),
    // (min x, min y, max z), (min x, max y, min z), ... (max x, max y, max z).
    Point getCorner(int i) const;

private:
    // Settles a merge by the two states: 1 or 0 for the answer, -1 when the corners
    // have to be merged.
    int mergeStates(int otherState);
    bool merge(BoundingVolume const& other, Dorvan::Matrix<float, 4> const* transform);
    bool mergeExtents(float const* lo, float const* hi);

    int mState;
    Point mMin;
    Point mMax;
};

}  // namespace Velun
