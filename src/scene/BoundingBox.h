#pragma once

#include "scene/BoundingVolume.h"
#include "velun_export.h"

#if defined(__SSE__) || defined(_M_X64) || defined(_M_AMD64)
#include <xmmintrin.h>
#define VELUN_BOUNDING_BOX_SSE 1
#else
#define VELUN_BOUNDING_BOX_SSE 0
#endif

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
    ~BoundingBox() override;

    void setEmpty() override { mState = StateEmpty; }
    void setInfinite() override { mState = StateInfinite; }
    int getState() const override { return mState; }

    // `other` as the box around its eight corners taken through `otherToThis`: -1 when
    // either box is empty or they lie apart, 1 when this box is infinite, else 0.
    int intersects(BoundingVolume const& other, Dorvan::Matrix<float, 4> const& otherToThis) const override;
    int intersects(BoundingVolume const& other) const override;
    int intersects(Frustrum const& frustum) const override;
    bool contains(Point const& point) const override;

    // -1 outside, 0 for an infinite box; otherwise the largest distance of a corner
    // in front of the near plane.
    float getFrustrumDistance(Frustrum const& frustum) const override;

    // Merging with a transformation gives the axis-aligned box around the eight
    // transformed corners of `other`.
    bool merge(BoundingVolume const& other, Dorvan::Matrix<float, 4> const& transform) override;
    bool merge(BoundingVolume const& other) override;
    bool merge(Point const& point) override;

    BoundingVolume* transformed(Dorvan::Matrix<float, 4> const& transform) const override;

    int getVolumeType() const override { return VolumeBox; }

    Point const& getMin() const { return mMin; }
    Point const& getMax() const { return mMax; }

    // The same as the virtual merges for a box known to be one; the update pass calls
    // these without a virtual dispatch.
    bool mergeBox(BoundingBox const& other) {
        int decided = mergeStates(other.mState);
        if (decided >= 0)
            return decided != 0;
        return mergeExtents(other.mMin.m, other.mMax.m);
    }
    bool mergeBox(BoundingBox const& other, Dorvan::Matrix<float, 4> const& transform) {
        if (transform.mIdentity)
            return mergeBox(other);
        int decided = mergeStates(other.mState);
        if (decided >= 0)
            return decided != 0;
        float const* m = transform.m;
        if (m[12] != 0.0f || m[13] != 0.0f || m[14] != 0.0f || m[15] != 1.0f)
            return mergeCorners(other, transform);
        // Affine: each axis of the result takes, term by term, the smaller or larger
        // product, which gives exactly the extremes over the eight transformed corners
        // (rounding is monotonic, and the terms are summed in the order of M * v).
        float lo[4], hi[4];
#if VELUN_BOUNDING_BOX_SSE
        __m128 c0 = _mm_loadu_ps(m), c1 = _mm_loadu_ps(m + 4), c2 = _mm_loadu_ps(m + 8);
        __m128 c3 = _mm_set_ps(1.0f, 0.0f, 0.0f, 0.0f);
        _MM_TRANSPOSE4_PS(c0, c1, c2, c3);
        __m128 mn = _mm_loadu_ps(other.mMin.m), mx = _mm_loadu_ps(other.mMax.m);
        __m128 a = _mm_mul_ps(c0, _mm_shuffle_ps(mn, mn, 0x00)),
               b = _mm_mul_ps(c0, _mm_shuffle_ps(mx, mx, 0x00));
        __m128 low = _mm_min_ps(a, b), high = _mm_max_ps(a, b);
        a = _mm_mul_ps(c1, _mm_shuffle_ps(mn, mn, 0x55));
        b = _mm_mul_ps(c1, _mm_shuffle_ps(mx, mx, 0x55));
        low = _mm_add_ps(low, _mm_min_ps(a, b));
        high = _mm_add_ps(high, _mm_max_ps(a, b));
        a = _mm_mul_ps(c2, _mm_shuffle_ps(mn, mn, 0xaa));
        b = _mm_mul_ps(c2, _mm_shuffle_ps(mx, mx, 0xaa));
        _mm_storeu_ps(lo, _mm_add_ps(_mm_add_ps(low, _mm_min_ps(a, b)), c3));
        _mm_storeu_ps(hi, _mm_add_ps(_mm_add_ps(high, _mm_max_ps(a, b)), c3));
#else
        for (int r = 0; r < 3; ++r) {
            float s0 = 0.0f, s1 = 0.0f;
            for (int c = 0; c < 3; ++c) {
                float a = m[r * 4 + c] * other.mMin.m[c];
                float b = m[r * 4 + c] * other.mMax.m[c];
                s0 += a < b ? a : b;
                s1 += a < b ? b : a;
            }
            lo[r] = s0 + m[r * 4 + 3];
            hi[r] = s1 + m[r * 4 + 3];
        }
        lo[3] = hi[3] = 1.0f;
#endif
        return mergeExtents(lo, hi);
    }

    // Corner i of eight, with x as the slowest axis: (min x, min y, min z),
    // (min x, min y, max z), (min x, max y, min z), ... (max x, max y, max z).
    Point getCorner(int i) const;

private:
    // Settles a merge by the two states: 1 or 0 for the answer, -1 when the corners
    // have to be merged.
    int mergeStates(int otherState) {
        if (mState == StateInfinite || otherState == StateEmpty)
            return 0;
        if (otherState == StateInfinite) {
            mState = StateInfinite;
            return 1;
        }
        return -1;
    }
    // lo and hi hold x, y, z and w = 1.
    bool mergeExtents(float const* lo, float const* hi) {
        if (mState == StateEmpty) {
            for (int i = 0; i < 4; ++i) {
                mMin.m[i] = lo[i];
                mMax.m[i] = hi[i];
            }
            mState = StateBounded;
            return true;
        }
#if VELUN_BOUNDING_BOX_SSE
        __m128 l = _mm_loadu_ps(lo), h = _mm_loadu_ps(hi);
        __m128 mn = _mm_loadu_ps(mMin.m), mx = _mm_loadu_ps(mMax.m);
        int moved = _mm_movemask_ps(_mm_or_ps(_mm_cmplt_ps(l, mn), _mm_cmpgt_ps(h, mx)));
        _mm_storeu_ps(mMin.m, _mm_min_ps(l, mn));
        _mm_storeu_ps(mMax.m, _mm_max_ps(h, mx));
        return moved != 0;
#else
        bool moved = false;
        for (int i = 0; i < 3; ++i) {
            moved = moved || lo[i] < mMin.m[i] || hi[i] > mMax.m[i];
            mMin.m[i] = lo[i] < mMin.m[i] ? lo[i] : mMin.m[i];
            mMax.m[i] = hi[i] > mMax.m[i] ? hi[i] : mMax.m[i];
        }
        return moved;
#endif
    }
    // Whether the bounded boxes touch on all three axes.
    VELUN_NO_EXPORT bool overlaps(BoundingBox const& box) const;
    // The general case: each corner divided by its w.
    VELUN_NO_EXPORT bool mergeCorners(BoundingBox const& other, Dorvan::Matrix<float, 4> const& transform);
    VELUN_NO_EXPORT bool merge(BoundingVolume const& other, Dorvan::Matrix<float, 4> const* transform);

    int mState;
    Point mMin;
    Point mMax;
};

}  // namespace Velun
