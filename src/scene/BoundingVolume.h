#pragma once

#include "scene/Matrix.h"
#include "scene/Point.h"
#include "velun_export.h"

namespace Velun {

class Frustrum;

// A region of space: the world volume of every node, and the local volume of leaves
// and drawables. Intersection tests answer -1 outside, 0 overlapping, 1 inside.
class VELUN_EXPORT BoundingVolume {
public:
    enum State {
        StateInfinite = 0,  // all of space; absorbs whatever is merged into it
        StateEmpty = 1,     // nothing; the state of a new volume
        StateBounded = 2    // real extents
    };
    enum VolumeType { VolumeBox = 0, VolumeSphere = 1 };

    virtual ~BoundingVolume();

    virtual void setEmpty() = 0;
    virtual void setInfinite() = 0;
    virtual int getState() const = 0;

    // `other` given in coordinates that `otherToThis` maps into this volume's.
    virtual int intersects(BoundingVolume const& other,
                           Dorvan::Matrix<float, 4> const& otherToThis) const = 0;
    virtual int intersects(BoundingVolume const& other) const = 0;
    virtual int intersects(Frustrum const& frustum) const = 0;
    virtual bool contains(Point const& point) const = 0;

    // Below 0 when the volume lies outside the frustum; otherwise a value that grows
    // with the distance from the eye, for sorting.
    virtual float getFrustrumDistance(Frustrum const& frustum) const = 0;

    // Widen this volume; each answers whether anything changed.
    virtual bool merge(BoundingVolume const& other, Dorvan::Matrix<float, 4> const& transform) = 0;
    virtual bool merge(BoundingVolume const& other) = 0;
    virtual bool merge(Point const& point) = 0;

    // A new volume, owned by the caller, around this one after `transform`.
    virtual BoundingVolume* transformed(Dorvan::Matrix<float, 4> const& transform) const = 0;

    virtual int getVolumeType() const = 0;

    // 1 if the point lies inside, else 0.
    virtual float getCoverage(Point const& point) const;

    bool isEmpty() const { return getState() == StateEmpty; }
    bool isInfinite() const { return getState() == StateInfinite; }
};

}  // namespace Velun
