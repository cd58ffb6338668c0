#pragma once

#include <cstring>

#include "scene/TVector.h"

namespace Dorvan {

// Square matrix stored row by row: element (r, c) is m[r * N + c]. Vectors are
// columns (M * v) and A * B applies B first; a 4x4 transformation keeps its
// translation in m[3], m[7], m[11].
//
// mIdentity is true only while the matrix is known to be the identity; products
// with such a matrix are plain copies. Whoever writes m directly must clear it;
// the mutable operator() does so on every call.
template <typename T, int N>
class Matrix {
public:
    // Leaves the elements unset: call setIdentity or assign before reading.
    Matrix() {}
    virtual ~Matrix() {}
    // One block copy: the update pass copies a matrix into every node it places.
    Matrix(Matrix const& other) : mIdentity(other.mIdentity) { std::memcpy(m, other.m, sizeof(m)); }
    Matrix& operator=(Matrix const& other) {
        std::memcpy(m, other.m, sizeof(m));
        mIdentity = other.mIdentity;
        return *this;
    }

    static Matrix identity() {
        Matrix r;
        r.setIdentity();
        return r;
    }

    void setIdentity() {
        for (int i = 0; i < N * N; ++i)
            m[i] = 0;
        for (int i = 0; i < N; ++i)
            m[i * N + i] = 1;
        mIdentity = true;
    }

    bool isIdentity() const { return mIdentity; }

    T& operator()(int row, int col) {
        mIdentity = false;
        return m[row * N + col];
    }
    T operator()(int row, int col) const { return m[row * N + col]; }

    // this * other.
    Matrix operator*(Matrix const& other) const {
        if (mIdentity)
            return other;
        if (other.mIdentity)
            return *this;
        return product(*this, other);
    }

    // other * this.
    Matrix leftMultiplied(Matrix const& other) const {
        if (mIdentity)
            return other;
        if (other.mIdentity)
            return *this;
        return product(other, *this);
    }

    TVector<T, N> operator*(TVector<T, N> const& v) const {
        if (mIdentity)
            return v;
        TVector<T, N> r;
        for (int i = 0; i < N; ++i) {
            T s = 0;
            for (int k = 0; k < N; ++k)
                s += m[i * N + k] * v[k];
            r[i] = s;
        }
        return r;
    }

    Matrix& operator*=(T s) {
        for (int i = 0; i < N * N; ++i)
            m[i] *= s;
        mIdentity = false;
        return *this;
    }

    Matrix transposed() const {
        if (mIdentity)
            return *this;
        Matrix r;
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j)
                r.m[j * N + i] = m[i * N + j];
        r.mIdentity = false;
        return r;
    }

    // Adjugate over the determinant. A singular matrix (determinant exactly 0) has no
    // inverse and gives the identity.
    Matrix inverse() const {
        static_assert(N == 4, "inverse is defined for 4x4 matrices");
        if (mIdentity)
            return *this;
        T cof[16];
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                cof[r * 4 + c] = ((r + c) % 2 ? -1 : 1) * minor3(r, c);
        T det = 0;
        for (int c = 0; c < 4; ++c)
            det += m[c] * cof[c];
        Matrix result;
        if (det == 0) {
            result.setIdentity();
            return result;
        }
        T f = T(1) / det;
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < 4; ++c)
                result.m[c * 4 + r] = cof[r * 4 + c] * f;
        result.mIdentity = false;
        return result;
    }

    // Copies a 3x3 block into the upper left; an identity block into an identity
    // matrix changes nothing.
    void setUpper(Matrix<T, 3> const& upper) {
        static_assert(N == 4, "setUpper is defined for 4x4 matrices");
        if (upper.mIdentity && mIdentity)
            return;
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c)
                m[r * 4 + c] = upper.m[r * 3 + c];
        mIdentity = false;
    }

    T m[N * N];
    bool mIdentity;

private:
    static Matrix product(Matrix const& a, Matrix const& b) {
        Matrix r;
        for (int i = 0; i < N; ++i)
            for (int j = 0; j < N; ++j) {
                T s = 0;
                for (int k = 0; k < N; ++k)
                    s += a.m[i * N + k] * b.m[k * N + j];
                r.m[i * N + j] = s;
            }
        r.mIdentity = false;
        return r;
    }

    // Determinant of the 3x3 block without `row` and `col`, by the rule of Sarrus.
    T minor3(int row, int col) const {
        int rs[3], cs[3];
        for (int i = 0, r = 0, c = 0; i < 4; ++i) {
            if (i != row)
                rs[r++] = i;
            if (i != col)
                cs[c++] = i;
        }
        auto e = [&](int r, int c) { return m[rs[r] * 4 + cs[c]]; };
        return e(0, 0) * e(1, 1) * e(2, 2) + e(0, 1) * e(1, 2) * e(2, 0) + e(0, 2) * e(1, 0) * e(2, 1) -
               e(0, 2) * e(1, 1) * e(2, 0) - e(0, 0) * e(1, 2) * e(2, 1) - e(0, 1) * e(1, 0) * e(2, 2);
    }
};

}  // namespace Dorvan
