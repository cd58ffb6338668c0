#pragma once

#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// A point in homogeneous coordinates, always normalised to w = 1. Transform one with
// Point(matrix * point).
class VELUN_EXPORT Point : public Dorvan::TVector<float, 4> {
public:
    Point() : Dorvan::TVector<float, 4>(0.0f, 0.0f, 0.0f, 1.0f) {}
    Point(float x, float y, float z) : Dorvan::TVector<float, 4>(x, y, z, 1.0f) {}

    // Divides by w; a direction (w = 0) has no point and gives the origin.
    Point(Dorvan::TVector<float, 4> const& v) {
        if (v[3] == 0.0f) {
            m[0] = m[1] = m[2] = 0.0f;
        } else {
            float f = 1.0f / v[3];
            m[0] = v[0] * f;
            m[1] = v[1] * f;
            m[2] = v[2] * f;
        }
        m[3] = 1.0f;
    }

    ~Point() override {}

    // x, y, z; w is dropped.
    operator Dorvan::TVector<float, 3>() const { return Dorvan::TVector<float, 3>(m[0], m[1], m[2]); }
};

}  // namespace Velun
