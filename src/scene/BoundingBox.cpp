#include "scene/BoundingBox.h"

#include "scene/Frustrum.h"

namespace Velun {

BoundingBox::BoundingBox() : mState(StateEmpty) {}

BoundingBox::BoundingBox(Point const& a, Point const& b) : mState(StateEmpty) {
    merge(a);
    merge(b);
}

BoundingBox::~BoundingBox() {}

Point BoundingBox::getCorner(int i) const {
    return Point(i & 4 ? mMax[0] : mMin[0], i & 2 ? mMax[1] : mMin[1], i & 1 ? mMax[2] : mMin[2]);
}

int BoundingBox::intersects(BoundingVolume const& other, Dorvan::Matrix<float, 4> const& otherToThis) const {
    if (mState == StateEmpty)
        return -1;
    if (other.getVolumeType() != VolumeBox)
        return 1;
    BoundingBox const& box = static_cast<BoundingBox const&>(other);
    if (box.mState == StateEmpty)
        return -1;
    if (mState == StateInfinite)
        return 1;
    if (box.mState == StateInfinite)
        return 0;
    // The box around other's eight corners in this box's space.
    BoundingBox placed;
    placed.mergeBox(box, otherToThis);
    return overlaps(placed) ? 0 : -1;
}

int BoundingBox::intersects(BoundingVolume const& other) const {
    if (mState == StateEmpty)
        return -1;
    if (other.getVolumeType() != VolumeBox)
        return 1;
    // As with a placing matrix: an infinite box meets every volume but an empty one.
    int otherState = other.getState();
    if (otherState == StateEmpty)
        return -1;
    if (mState == StateInfinite)
        return 1;
    if (otherState == StateInfinite)
        return 0;
    return overlaps(static_cast<BoundingBox const&>(other)) ? 0 : -1;
}

bool BoundingBox::overlaps(BoundingBox const& box) const {
    for (int i = 0; i < 3; ++i)
        if (box.mMax[i] < mMin[i] || box.mMin[i] > mMax[i])
            return false;
    return true;
}

// For each plane the largest and smallest distance over the corners come from the
// corners picked by the signs of the normal; since rounding is monotonic they equal
// the largest and smallest of the eight distances computed one by one.
int BoundingBox::intersects(Frustrum const& frustum) const {
    if (mState == StateEmpty)
        return -1;
    if (mState == StateInfinite)
        return 1;
    Plane const* planes = frustum.getPlanes();
    bool inside = true;
    for (int p = 0; p < 6; ++p) {
        Dorvan::TVector<float, 4> const& c = planes[p].getCoefficients();
        float near[3], far[3];
        for (int i = 0; i < 3; ++i) {
            near[i] = c[i] >= 0.0f ? mMax[i] : mMin[i];
            far[i] = c[i] >= 0.0f ? mMin[i] : mMax[i];
        }
        float highest = c[0] * near[0] + c[1] * near[1] + c[2] * near[2] + c[3];
        if (highest <= 0.0f)
            return -1;
        float lowest = c[0] * far[0] + c[1] * far[1] + c[2] * far[2] + c[3];
        if (lowest <= 0.0f)
            inside = false;
    }
    return inside ? 1 : 0;
}

bool BoundingBox::contains(Point const& p) const {
    if (mState == StateEmpty)
        return false;
    if (mState == StateInfinite)
        return true;
    for (int i = 0; i < 3; ++i)
        if (p[i] < mMin[i] || p[i] > mMax[i])
            return false;
    return true;
}

// Each plane's distance is that of the corner the signs of its normal pick: on each
// axis the larger of the products with the box's two extents. The planes go four at
// a time, with the products summed in the same order as one by one: -1 if any plane
// has that corner on or behind it, else the near plane's distance.
float BoundingBox::getFrustrumDistance(Frustrum const& frustum) const {
    if (mState == StateEmpty)
        return -1.0f;
    if (mState == StateInfinite)
        return 0.0f;
    float const* c = frustum.getPlaneComponents();
#if VELUN_BOUNDING_BOX_SSE
    __m128 const low = _mm_loadu_ps(mMin.m), high = _mm_loadu_ps(mMax.m);
    __m128 const lx = _mm_shuffle_ps(low, low, 0x00), hx = _mm_shuffle_ps(high, high, 0x00);
    __m128 const ly = _mm_shuffle_ps(low, low, 0x55), hy = _mm_shuffle_ps(high, high, 0x55);
    __m128 const lz = _mm_shuffle_ps(low, low, 0xaa), hz = _mm_shuffle_ps(high, high, 0xaa);
    __m128 distances[2];
    int behind = 0;
    for (int half = 0; half < 2; ++half) {
        __m128 a = _mm_loadu_ps(c + half * 4), b = _mm_loadu_ps(c + 8 + half * 4);
        __m128 cc = _mm_loadu_ps(c + 16 + half * 4), d = _mm_loadu_ps(c + 24 + half * 4);
        __m128 sum = _mm_add_ps(_mm_max_ps(_mm_mul_ps(a, lx), _mm_mul_ps(a, hx)),
                                _mm_max_ps(_mm_mul_ps(b, ly), _mm_mul_ps(b, hy)));
        sum = _mm_add_ps(sum, _mm_max_ps(_mm_mul_ps(cc, lz), _mm_mul_ps(cc, hz)));
        distances[half] = _mm_add_ps(sum, d);
        behind |= _mm_movemask_ps(_mm_cmple_ps(distances[half], _mm_setzero_ps()));
    }
    if (behind)
        return -1.0f;
    return _mm_cvtss_f32(_mm_shuffle_ps(distances[1], distances[1], 0x01));
#else
    float highest = 0.0f;
    for (int p = 0; p < 6; ++p) {
        float x = c[p] >= 0.0f ? mMax[0] : mMin[0];
        float y = c[8 + p] >= 0.0f ? mMax[1] : mMin[1];
        float z = c[16 + p] >= 0.0f ? mMax[2] : mMin[2];
        highest = c[p] * x + c[8 + p] * y + c[16 + p] * z + c[24 + p];
        if (highest <= 0.0f)
            return -1.0f;
    }
    return highest;
#endif
}

bool BoundingBox::merge(Point const& p) {
    if (mState == StateInfinite)
        return false;
    if (mState == StateEmpty) {
        mMin = p;
        mMax = p;
        mState = StateBounded;
        return true;
    }
    return mergeExtents(p.m, p.m);
}

bool BoundingBox::mergeCorners(BoundingBox const& other, Dorvan::Matrix<float, 4> const& transform) {
    bool moved = false;
    for (int i = 0; i < 8; ++i)
        moved = merge(Point(transform * other.getCorner(i))) || moved;
    return moved;
}

bool BoundingBox::merge(BoundingVolume const& other) { return merge(other, nullptr); }

bool BoundingBox::merge(BoundingVolume const& other, Dorvan::Matrix<float, 4> const& transform) {
    return merge(other, &transform);
}

bool BoundingBox::merge(BoundingVolume const& other, Dorvan::Matrix<float, 4> const* transform) {
    MergeDecision decided = mergeStates(other.getState());
    if (decided != MergeExtents)
        return decided == MergeChanged;
    if (other.getVolumeType() != VolumeBox)
        return false;
    BoundingBox const& box = static_cast<BoundingBox const&>(other);
    return transform ? mergeBox(box, *transform) : mergeBox(box);
}

BoundingVolume* BoundingBox::transformed(Dorvan::Matrix<float, 4> const& transform) const {
    BoundingBox* box = new BoundingBox();
    if (mState == StateInfinite)
        box->setInfinite();
    else if (mState == StateBounded)
        box->mergeBox(*this, transform);
    return box;
}

}  // namespace Velun
