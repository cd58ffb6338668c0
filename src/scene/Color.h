#pragma once

#include "velun_export.h"

namespace Velun {

// An RGBA colour with components from 0 to 1.
class VELUN_EXPORT Color {
public:
    // Channel order of pixel data.
    enum Format { None = 0, ColorIndex = 1, Rgb = 2, Rgba = 3, Bgr = 4, Bgra = 5, Luminance = 6 };

    Color() : r(0.0f), g(0.0f), b(0.0f), a(1.0f) {}
    Color(float red, float green, float blue, float alpha = 1.0f) : r(red), g(green), b(blue), a(alpha) {}

    // The first `count` values become r, g, b, a; components without a value are 1.
    Color(float const* values, int count) : r(1.0f), g(1.0f), b(1.0f), a(1.0f) {
        float* dst[4] = {&r, &g, &b, &a};
        for (int i = 0; i < count && i < 4; ++i)
            *dst[i] = values[i];
    }

    // Bytes scaled by 1/255; components without a value are 1.
    Color(unsigned char const* values, int count) : r(1.0f), g(1.0f), b(1.0f), a(1.0f) {
        float* dst[4] = {&r, &g, &b, &a};
        for (int i = 0; i < count && i < 4; ++i)
            *dst[i] = values[i] * 0.003921569f;
    }

    bool operator==(Color const& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
    bool operator!=(Color const& o) const { return !(*this == o); }

    float r;
    float g;
    float b;
    float a;
};

}  // namespace Velun
