#include <gtest/gtest.h>

#include <cmath>

#include "scene/Matrix.h"
#include "scene/Point.h"
#include "scene/Transformation.h"

using Dorvan::Matrix;
using Dorvan::TVector;
using Velun::Point;

namespace {

typedef Matrix<float, 4> Matrix4;

Matrix4 fromRows(std::initializer_list<float> values) {
    Matrix4 m;
    int i = 0;
    for (float v : values)
        m.m[i++] = v;
    m.mIdentity = false;
    return m;
}

void expectNear(Matrix4 const& a, Matrix4 const& b, float tolerance) {
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(a.m[i], b.m[i], tolerance) << "element " << i;
}

void expectIdentity(Matrix4 const& m, float tolerance) { expectNear(m, Matrix4::identity(), tolerance); }

TEST(MatrixTest, ConventionsHoldAgainstHandComputedProducts) {
    // A translation by (1, 2, 3) lives in m[3], m[7], m[11] and moves a point as M * p.
    Matrix4 t = fromRows({1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1});
    Point p = Point(t * Point(1, 1, 1));
    EXPECT_FLOAT_EQ(p[0], 2);
    EXPECT_FLOAT_EQ(p[1], 3);
    EXPECT_FLOAT_EQ(p[2], 4);

    // A rotation by 90 degrees about Z: x goes to y.
    Matrix4 r = fromRows({0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});

    // t * r applies r first: (1, 0, 0) -> (0, 1, 0) -> (1, 3, 3).
    Point q = Point((t * r) * Point(1, 0, 0));
    EXPECT_FLOAT_EQ(q[0], 1);
    EXPECT_FLOAT_EQ(q[1], 3);
    EXPECT_FLOAT_EQ(q[2], 3);
    // r * t applies t first: (1, 0, 0) -> (2, 2, 3) -> (-2, 2, 3).
    Point s = Point((r * t) * Point(1, 0, 0));
    EXPECT_FLOAT_EQ(s[0], -2);
    EXPECT_FLOAT_EQ(s[1], 2);
    EXPECT_FLOAT_EQ(s[2], 3);

    expectNear(r.leftMultiplied(t), t * r, 0);

    Matrix4 a = fromRows({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    Matrix4 b = fromRows({2, 0, 0, 1, 0, 3, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1});
    expectNear(a * b, fromRows({5, 6, 3, 5, 17, 18, 7, 13, 29, 30, 11, 21, 41, 42, 15, 29}), 0);
    EXPECT_FALSE((a * b).mIdentity);

    Matrix4 tr = a.transposed();
    EXPECT_FLOAT_EQ(tr.m[1], 5);
    EXPECT_FLOAT_EQ(tr.m[4], 2);
    EXPECT_FLOAT_EQ(tr.m[12], 4);
}

TEST(MatrixTest, IdentityShortCutsCarryTheFlag) {
    Matrix4 id = Matrix4::identity();
    Matrix4 b = fromRows({2, 0, 0, 1, 0, 3, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1});
    EXPECT_FALSE((id * b).mIdentity);
    EXPECT_TRUE((id * id).mIdentity);
    EXPECT_TRUE((id.leftMultiplied(id)).mIdentity);
    expectNear(b * id, b, 0);
    EXPECT_TRUE(id.transposed().mIdentity);
    EXPECT_TRUE(id.inverse().mIdentity);

    // Writing through the mutable accessor clears the flag, even with the same value.
    Matrix4 m = Matrix4::identity();
    m(0, 0) = 1.0f;
    EXPECT_FALSE(m.mIdentity);
    Matrix4 scaled = Matrix4::identity();
    scaled *= 1.0f;
    EXPECT_FALSE(scaled.mIdentity);

    TVector<float, 4> v(1, 2, 3, 4);
    TVector<float, 4> w = id * v;
    EXPECT_EQ(w[3], 4);
}

TEST(MatrixTest, InverseTimesMatrixIsTheIdentity) {
    Velun::Transformation t;
    t.rotate(0.7f, 1, 2, 3, false);
    expectIdentity(t.getInverseTransformation() * t.getLocalTransformation(), 1e-6f);
    t.rotateX(1.1f, false);
    t.rotateY(-0.4f, true);
    t.rotateZ(2.5f, false);
    expectIdentity(t.getInverseTransformation() * t.getLocalTransformation(), 1e-5f);

    Velun::Transformation moved;
    moved.translate(3, -4, 5, false);
    expectIdentity(moved.getInverseTransformation() * moved.getLocalTransformation(), 1e-6f);

    Velun::Transformation scaled;
    scaled.scale(2, 0.5f, 4, false);
    expectIdentity(scaled.getLocalTransformation().inverse() * scaled.getLocalTransformation(), 1e-6f);
    EXPECT_FLOAT_EQ(scaled.getInverseTransformation().m[0], 0.5f);
}

}  // namespace
