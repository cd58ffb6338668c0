#pragma once

#include <cmath>

#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// A 2D point in homogeneous coordinates (x, y, w).
class VELUN_EXPORT Point2D : public Dorvan::TVector<float, 3> {
public:
    Point2D() : Dorvan::TVector<float, 3>(0.0f, 0.0f, 1.0f) {}
    Point2D(float x, float y) : Dorvan::TVector<float, 3>(x, y, 1.0f) {}

    // Divides by w; with w = 0 the coordinates are kept as they are.
    Point2D(Dorvan::TVector<float, 3> const& v) {
        if (v[2] == 0.0f) {
            m[0] = v[0];
            m[1] = v[1];
        } else {
            m[0] = v[0] / v[2];
            m[1] = v[1] / v[2];
        }
        m[2] = 1.0f;
    }

    // Projection that drops one axis (0: x, 1: y, 2: z); w is copied, not divided.
    Point2D(Dorvan::TVector<float, 4> const& v, int axis) {
        m[0] = axis == 0 ? v[1] : v[0];
        m[1] = axis == 2 ? v[1] : v[2];
        m[2] = v[3];
    }

    virtual ~Point2D() {}

    // Polar angle in radians, atan2(y, x).
    float angle() const { return std::atan2(m[1], m[0]); }
};

}  // namespace Velun
