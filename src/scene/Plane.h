#pragma once

#include "scene/Point.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// The plane a*x + b*y + c*z + d = 0; the normal (a, b, c) points to the positive side.
class VELUN_EXPORT Plane {
public:
    Plane() : mPlane(0.0f, 0.0f, 0.0f, 0.0f) {}
    Plane(Dorvan::TVector<float, 4> const& coefficients) : mPlane(coefficients) {}
    virtual ~Plane() {}

    void set(float a, float b, float c, float d) { mPlane = Dorvan::TVector<float, 4>(a, b, c, d); }
    Plane& operator=(Dorvan::TVector<float, 4> const& coefficients) {
        mPlane = coefficients;
        return *this;
    }

    Dorvan::TVector<float, 4> const& getCoefficients() const { return mPlane; }

    // A true distance only while the normal has length 1; the sign always holds.
    float distance(Point const& p) const {
        return mPlane[0] * p[0] + mPlane[1] * p[1] + mPlane[2] * p[2] + mPlane[3];
    }
    bool isInFront(Point const& p) const { return distance(p) >= 0.0f; }

    Dorvan::TVector<float, 3> getNormal() const {
        return Dorvan::TVector<float, 3>(mPlane[0], mPlane[1], mPlane[2]);
    }

    // Divides all four coefficients by the length of the 4-vector: signs and the order
    // of distances survive, which is all culling needs.
    void normalize() { mPlane = mPlane.normalized(); }

private:
    Dorvan::TVector<float, 4> mPlane;
};

}  // namespace Velun
