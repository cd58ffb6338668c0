#include <cmath>
#include <sstream>

#include "core/VelunCore.h"
#include "water/Water.h"

namespace Velun {

namespace {

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
// height to 1, shear P2 onto (0, 1): the product is written out, as it runs once per
// quad. P3 lands at (p, q); the quad is convex enough to map only with p and q above 0.
// A zero scale would divide by zero, so the quad stays unmapped then.
void Water::QuadSegment::buildMapping() {
    mMapping.setIdentity();
    mFarCorner = Point2D(0.0f, 0.0f);
    Point const& p0 = mPrevious->getStart();
    Point const& p1 = mPrevious->getEnd();
    float dx = p1[0] - p0[0], dz = p1[2] - p0[2];
    float length = std::sqrt(dx * dx + dz * dz);
    float c = length > 0.0f ? dx / length : 1.0f, s = length > 0.0f ? dz / length : 0.0f;
    // P2 relative to P0, turned.
    float rx = getStart()[0] - p0[0], rz = getStart()[2] - p0[2];
    float turnedX = c * rx + s * rz, turnedZ = -s * rx + c * rz;
    if (length == 0.0f || turnedZ == 0.0f) {
        reportInvalid(0.0f, 0.0f);
        return;
    }
    float shear = turnedX / (length * turnedZ);
    float m00 = c / length + shear * s, m01 = s / length - shear * c;
    float m10 = -s / turnedZ, m11 = c / turnedZ;
    mMapping(0, 0) = m00;
    mMapping(0, 1) = m01;
    mMapping(0, 2) = -(m00 * p0[0] + m01 * p0[2]);
    mMapping(1, 0) = m10;
    mMapping(1, 1) = m11;
    mMapping(1, 2) = -(m10 * p0[0] + m11 * p0[2]);
    float p = m00 * getEnd()[0] + m01 * getEnd()[2] + mMapping(0, 2);
    float q = m10 * getEnd()[0] + m11 * getEnd()[2] + mMapping(1, 2);
    mFarCorner = Point2D(p, q);
    mValid = p > 0.0f && q > 0.0f;
    if (!mValid)
        reportInvalid(p, q);
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
