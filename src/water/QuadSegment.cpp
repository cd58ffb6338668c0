#include <cmath>
#include <sstream>

#include "core/VelunCore.h"
#include "water/Water.h"

namespace Velun {

namespace {

typedef Dorvan::Matrix<float, 3> Matrix3;

Matrix3 affine(float m00, float m01, float m02, float m10, float m11, float m12) {
    Matrix3 m;
    m.setIdentity();
    m(0, 0) = m00;
    m(0, 1) = m01;
    m(0, 2) = m02;
    m(1, 0) = m10;
    m(1, 1) = m11;
    m(1, 2) = m12;
    return m;
}

// (x, z) of a corner, as the plane point (x, z, 1); corners have w = 1.
Dorvan::TVector<float, 3> planePoint(Point const& p) { return Dorvan::TVector<float, 3>(p[0], p[2], 1.0f); }

float clamp01(float x) { return x < 0.0f ? 0.0f : (x > 1.0f ? 1.0f : x); }

}  // namespace

Water::LineSegment::LineSegment(Water* owner, Dorvan::TVector<float, 4> const& start,
                                Dorvan::TVector<float, 4> const& end,
                                Dorvan::TVector<float, 3> const& velocity)
    : mOwner(owner), mVelocity(velocity), mStart(start), mEnd(end) {}

Water::LineSegment::~LineSegment() {}

Water::QuadSegment::QuadSegment(Water* owner, LineSegment* previous, unsigned int index,
                                Dorvan::TVector<float, 4> const& start, Dorvan::TVector<float, 4> const& end,
                                Dorvan::TVector<float, 3> const& velocity)
    : LineSegment(owner, start, end, velocity), mPrevious(previous), mIndex(index), mValid(false) {
    buildMapping();
}

Water::QuadSegment::~QuadSegment() {}

// Translate P0 to the origin, turn P1 onto the x axis, scale P1 to (1, 0) and P2's
// height to 1, shear P2 onto (0, 1). P3 lands at (p, q); the quad is convex enough to
// map only with p and q above 0. A zero scale would divide by zero, so the quad stays
// unmapped then.
void Water::QuadSegment::buildMapping() {
    mMapping.setIdentity();
    mFarCorner = Point2D(0.0f, 0.0f);
    Point const& p0 = mPrevious->getStart();
    Point const& p1 = mPrevious->getEnd();
    float dx = p1[0] - p0[0], dz = p1[2] - p0[2];
    float length = std::sqrt(dx * dx + dz * dz);
    Matrix3 m = affine(1, 0, -p0[0], 0, 1, -p0[2]);
    if (length > 0.0f) {
        float c = dx / length, s = dz / length;
        m = affine(c, s, 0, -s, c, 0) * m;
    }
    Dorvan::TVector<float, 3> corner = m * planePoint(getStart());
    if (length == 0.0f || corner[1] == 0.0f) {
        reportInvalid(0.0f, 0.0f);
        return;
    }
    m = affine(1.0f / length, 0, 0, 0, 1.0f / corner[1], 0) * m;
    corner = m * planePoint(getStart());
    m = affine(1, -corner[0], 0, 0, 1, 0) * m;
    Dorvan::TVector<float, 3> far = m * planePoint(getEnd());
    mMapping = m;
    mFarCorner = Point2D(far[0], far[1]);
    mValid = far[0] > 0.0f && far[1] > 0.0f;
    if (!mValid)
        reportInvalid(far[0], far[1]);
}

void Water::QuadSegment::reportInvalid(float p, float q) const {
    std::ostringstream text;
    text << "Invalid quad coordinates! Quad: " << mIndex << "; P3: " << p << "; " << q;
    VelunCore::getLogger("water")->error(text.str());
}

// In the unit frame the quad is bounded by s = 0, t = 0 and the edges from (1, 0) and
// (0, 1) to (p, q); (u, v) inverts the bilinear shape
// (s, t) = (u (1 + (p - 1) v), v (1 + (q - 1) u)), a quadratic in v.
bool Water::QuadSegment::locate(Point const& local, float& u, float& v) const {
    if (!mValid)
        return false;
    float const* m = mMapping.m;
    float s = m[0] * local[0] + m[1] * local[2] + m[2];
    float t = m[3] * local[0] + m[4] * local[2] + m[5];
    float p = mFarCorner[0], q = mFarCorner[1];
    if (!(s >= 0.0f && t >= 0.0f && q * s <= q + (p - 1.0f) * t && p * t <= p + (q - 1.0f) * s))
        return false;
    float linear = 1.0f + (q - 1.0f) * s - (p - 1.0f) * t;
    float discriminant = linear * linear + 4.0f * (p - 1.0f) * t;
    // The root in [0, 1], written so that it holds for p = 1 (a linear equation) too.
    float denominator = linear + std::sqrt(discriminant > 0.0f ? discriminant : 0.0f);
    v = clamp01(denominator > 0.0f ? 2.0f * t / denominator : 0.0f);
    // 1 + (p - 1) v lies between 1 and p, both above 0.
    u = clamp01(s / (1.0f + (p - 1.0f) * v));
    return true;
}

float Water::QuadSegment::getHeight(float u, float v) const {
    float a = mPrevious->getStart()[1] + v * (getStart()[1] - mPrevious->getStart()[1]);
    float e = mPrevious->getEnd()[1] + v * (getEnd()[1] - mPrevious->getEnd()[1]);
    return a + u * (e - a);
}

Dorvan::TVector<float, 3> Water::QuadSegment::getVelocityAt(float v) const {
    Dorvan::TVector<float, 3> const& previous = mPrevious->getVelocity();
    return previous + (getVelocity() - previous) * v;
}

}  // namespace Velun
