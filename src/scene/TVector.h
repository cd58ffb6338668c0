#pragma once

#include <cmath>
#include <type_traits>

namespace Dorvan {

// Fixed-size vector of N values (x, y, z, w in index order). Default construction
// leaves the values unset; every operator returns a new vector.
template <typename T, int N>
class TVector {
public:
    TVector() {}

    // One value per element, e.g. TVector<float,3>(1, 0, 0).
    template <typename... A, typename = std::enable_if_t<sizeof...(A) == N && N != 1>>
    TVector(A... values) : m{static_cast<T>(values)...} {}

    virtual ~TVector() {}

    T& operator[](int i) { return m[i]; }
    T const& operator[](int i) const { return m[i]; }

    TVector operator+(TVector const& o) const {
        TVector r;
        for (int i = 0; i < N; ++i)
            r.m[i] = m[i] + o.m[i];
        return r;
    }

    TVector operator-(TVector const& o) const {
        TVector r;
        for (int i = 0; i < N; ++i)
            r.m[i] = m[i] - o.m[i];
        return r;
    }

    TVector operator*(T s) const {
        TVector r;
        for (int i = 0; i < N; ++i)
            r.m[i] = m[i] * s;
        return r;
    }

    TVector operator-() const {
        TVector r;
        for (int i = 0; i < N; ++i)
            r.m[i] = -m[i];
        return r;
    }

    T dot(TVector const& o) const {
        T s = 0;
        for (int i = 0; i < N; ++i)
            s += m[i] * o.m[i];
        return s;
    }

    // Over all N elements, w included.
    T length() const { return std::sqrt(dot(*this)); }

    // The zero vector stays zero: there is no direction to keep.
    TVector normalized() const {
        T len = length();
        if (len == 0) {
            TVector r;
            r.clear();
            return r;
        }
        return *this * (T(1) / len);
    }

    void clear() {
        for (int i = 0; i < N; ++i)
            m[i] = 0;
    }

    T m[N];
};

// Right-handed cross product.
template <typename T>
TVector<T, 3> cross(TVector<T, 3> const& a, TVector<T, 3> const& b) {
    return TVector<T, 3>(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]);
}

}  // namespace Dorvan
