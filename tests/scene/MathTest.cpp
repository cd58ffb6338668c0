#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "SceneFixture.h"
#include "scene/BoundingBox.h"
#include "scene/Frustrum.h"
#include "scene/Matrix.h"
#include "scene/Point.h"
#include "scene/Transformation.h"

using Dorvan::Matrix;
using Dorvan::TVector;
using SceneTest::BoxLeaf;
using Velun::BoundingBox;
using Velun::BoundingVolume;
using Velun::CameraSettings;
using Velun::Frustrum;
using Velun::Node;
using Velun::Point;
using Velun::Transformation;
using Velun::TransformationNode;

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

}  // namespace

namespace {

typedef Dorvan::Matrix<float, 4> Matrix4;

Point place(Transformation const& t, Point const& p) { return Point(t.getLocalTransformation() * p); }

void expectPoint(Point const& p, float x, float y, float z) {
    EXPECT_NEAR(p[0], x, 1e-5f);
    EXPECT_NEAR(p[1], y, 1e-5f);
    EXPECT_NEAR(p[2], z, 1e-5f);
}

TEST(TransformationTest, LocalChoosesTheAxes) {
    Transformation parentAxes;
    parentAxes.rotateZ(static_cast<float>(M_PI / 2), false);
    parentAxes.translate(1, 0, 0, false);
    expectPoint(place(parentAxes, Point()), 1, 0, 0);

    Transformation ownAxes;
    ownAxes.rotateZ(static_cast<float>(M_PI / 2), false);
    ownAxes.translate(1, 0, 0, true);
    expectPoint(place(ownAxes, Point()), 0, 1, 0);

    Transformation scaled;
    scaled.translate(Dorvan::TVector<float, 3>(1, 2, 3), false);
    scaled.scale(2, false);
    expectPoint(place(scaled, Point(1, 0, 0)), 4, 4, 6);
}

TEST(TransformationTest, MatrixCompositionAndInverse) {
    Transformation t;
    EXPECT_TRUE(t.getInverseTransformation().mIdentity);
    t.translate(1, 0, 0, false);
    Matrix4 m = Matrix4::identity();
    m(0, 0) = 2.0f;
    // Any non-zero flag composes on the right: the scale acts first.
    t.multMatrix(m, 0.5f);
    expectPoint(place(t, Point(1, 0, 0)), 3, 0, 0);
    t.multMatrix(m, 0.0f);
    expectPoint(place(t, Point(1, 0, 0)), 6, 0, 0);

    Dorvan::Matrix<float, 3> upper = Dorvan::Matrix<float, 3>::identity();
    upper(1, 1) = 3.0f;
    Transformation u;
    u.multMatrix(upper, 1.0f);
    expectPoint(place(u, Point(0, 1, 0)), 0, 3, 0);

    t.reset();
    EXPECT_TRUE(t.getLocalTransformation().mIdentity);
    EXPECT_TRUE(t.getInverseTransformation().mIdentity);

    Transformation flat;
    flat.scale(0, 1, 1, false);
    EXPECT_TRUE(flat.getInverseTransformation().mIdentity);

    Matrix4 placed = Matrix4::identity();
    placed(1, 3) = 4.0f;
    flat.setLocalTransformation(placed);
    EXPECT_FLOAT_EQ(flat.getInverseTransformation().m[7], -4.0f);
}

class TransformationNodeTest : public SceneTest::EngineTest {};

}  // namespace

namespace {

typedef Dorvan::Matrix<float, 4> Matrix4;

TEST(BoundingBoxTest, EmptyAndInfiniteVolumesInMerges) {
    BoundingBox box(Point(0, 0, 0), Point(1, 1, 1));
    BoundingBox empty;
    EXPECT_FALSE(box.merge(empty));
    EXPECT_EQ(box.getMax()[0], 1.0f);

    BoundingBox infinite;
    infinite.setInfinite();
    EXPECT_TRUE(box.merge(infinite));
    EXPECT_EQ(box.getState(), BoundingVolume::StateInfinite);

    // An infinite box absorbs everything and reports no change.
    EXPECT_FALSE(box.merge(BoundingBox(Point(5, 5, 5), Point(6, 6, 6))));
    EXPECT_FALSE(box.merge(Point(9, 9, 9)));
    EXPECT_EQ(box.getState(), BoundingVolume::StateInfinite);

    BoundingBox target;
    EXPECT_TRUE(target.merge(BoundingBox(Point(1, 1, 1), Point(2, 2, 2))));
    EXPECT_EQ(target.getState(), BoundingVolume::StateBounded);
    EXPECT_FALSE(target.merge(BoundingBox(Point(1.5f, 1.5f, 1.5f), Point(2, 2, 2))));
}

// Affine matrices take a short cut, projective ones transform and divide every corner.
TEST(BoundingBoxTest, MergeWithATransformEqualsTheEightCornersExactly) {
    Velun::Transformation t;
    t.rotate(0.83f, 0.3f, -1.0f, 0.6f, false);
    t.scale(1.5f, -0.5f, 2.0f, true);
    t.translate(-3.25f, 7.5f, 0.125f, false);
    // w shrinks towards the far corner, which so becomes the largest in every axis.
    Matrix4 projective = Matrix4::identity();
    projective(3, 0) = projective(3, 1) = projective(3, 2) = -0.1f;
    projective(3, 3) = 1.5f;
    BoundingBox local(Point(0.2f, 0.2f, 0.1f), Point(0.9f, 1.3f, 2.2f));
    for (Matrix4 const& m : {t.getLocalTransformation(), projective}) {
        BoundingBox fast;
        fast.merge(local, m);
        BoundingBox corners;
        for (int i = 0; i < 8; ++i)
            corners.merge(Point(m * local.getCorner(i)));
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(fast.getMin()[i], corners.getMin()[i]);
            EXPECT_EQ(fast.getMax()[i], corners.getMax()[i]);
        }
    }
}

TEST(BoundingBoxTest, IntersectsOtherBoxes) {
    BoundingBox box(Point(0, 0, 0), Point(1, 1, 1));
    EXPECT_EQ(box.intersects(BoundingBox(Point(2, 0, 0), Point(3, 1, 1))), -1);
    EXPECT_EQ(box.intersects(BoundingBox(Point(1, 1, 1), Point(3, 3, 3))), 0);
    EXPECT_EQ(box.intersects(BoundingBox(Point(0.2f, 0.2f, 0.2f), Point(0.8f, 0.8f, 0.8f))), 0);
    EXPECT_EQ(box.intersects(BoundingBox()), -1);

    BoundingBox infinite;
    infinite.setInfinite();
    EXPECT_EQ(box.intersects(infinite), 0);
    EXPECT_EQ(infinite.intersects(box), 1);
    EXPECT_EQ(BoundingBox().intersects(box), -1);
}

Matrix4 turnedAndMoved(float angle, float x) {
    Velun::Transformation t;
    t.rotateZ(angle, false);
    t.translate(x, 0, 0, false);
    return t.getLocalTransformation();
}

TEST(BoundingBoxTest, IntersectsABoxPlacedByAMatrix) {
    BoundingBox box(Point(0, 0, 0), Point(1, 1, 1)), empty, infinite;
    infinite.setInfinite();
    EXPECT_EQ(box.intersects(box, turnedAndMoved(0, 0.5f)), 0);
    EXPECT_EQ(box.intersects(box, turnedAndMoved(0, -1.5f)), -1);
    // Turned 45 degrees, the unit box reaches 0.71 left of its origin.
    EXPECT_EQ(box.intersects(box, turnedAndMoved(0.785398f, 1.6f)), 0);
    EXPECT_EQ(box.intersects(box, turnedAndMoved(0.785398f, 1.8f)), -1);
    EXPECT_EQ(empty.intersects(box, Matrix4::identity()), -1);
    EXPECT_EQ(infinite.intersects(empty, Matrix4::identity()), -1);
    EXPECT_EQ(infinite.intersects(box, turnedAndMoved(0, 9)), 1);
    EXPECT_EQ(box.intersects(infinite, turnedAndMoved(0, 9)), 0);
}

}  // namespace

namespace {

typedef Dorvan::Matrix<float, 4> Matrix4;

Frustrum perspective(float aspect = 1.0f, CameraSettings::AspectMode mode = CameraSettings::AspectFovXFromY) {
    return Frustrum(Matrix4::identity(), CameraSettings::Perspective, mode, 0.1, 1000.0, 90.0f, 90.0f,
                    aspect);
}

// Identity view and projection: the planes are x, y, z = -1 and 1.
Frustrum unitCube() {
    return Frustrum(Matrix4::identity(), CameraSettings::Orthographic, CameraSettings::AspectFixed, 1.0, 10.0,
                    0.0f, 0.0f, 1.0f);
}

TEST(FrustrumTest, PerspectiveProjectionAndPlanes) {
    Frustrum f = perspective();
    Matrix4 p = f.getProjectionMatrix();
    EXPECT_FALSE(p.mIdentity);
    EXPECT_NEAR(p.m[0], 1.0f, 1e-6f);
    EXPECT_NEAR(p.m[5], 1.0f, 1e-6f);
    EXPECT_NEAR(p.m[10], -1000.1 / 999.9, 1e-6);
    EXPECT_NEAR(p.m[11], -200.0 / 999.9, 1e-6);
    EXPECT_EQ(p.m[14], -1.0f);
    EXPECT_EQ(p.m[15], 0.0f);
    EXPECT_NEAR(f.getRight(), 0.1f, 1e-7f);
    EXPECT_NEAR(f.getBottom(), -0.1f, 1e-7f);

    Point ahead(0, 0, -1);
    for (int i = 0; i < 6; ++i)
        EXPECT_GT(f.getPlane(i).distance(ahead), 0.0f) << "plane " << i;
    EXPECT_LT(f.getPlane(Frustrum::PlaneNear).distance(Point(0, 0, 1)), 0.0f);
    EXPECT_LT(f.getPlane(Frustrum::PlaneFar).distance(Point(0, 0, -2000)), 0.0f);
    EXPECT_LT(f.getPlane(Frustrum::PlaneRight).distance(Point(5, 0, -1)), 0.0f);
    EXPECT_LT(f.getPlane(Frustrum::PlaneTop).distance(Point(0, 5, -1)), 0.0f);
}

TEST(FrustrumTest, BoxAgainstFrustrum) {
    Frustrum f = perspective();
    EXPECT_EQ(BoundingBox(Point(-0.1f, -0.1f, -2), Point(0.1f, 0.1f, -1)).intersects(f), 1);
    EXPECT_EQ(BoundingBox(Point(-5, -0.1f, -2), Point(0.1f, 0.1f, -1)).intersects(f), 0);
    EXPECT_EQ(BoundingBox(Point(-1, -1, 1), Point(1, 1, 2)).intersects(f), -1);
    EXPECT_EQ(BoundingBox().intersects(f), -1);
    BoundingBox infinite;
    infinite.setInfinite();
    EXPECT_EQ(infinite.intersects(f), 1);

    // Corners exactly on a plane do not count as in front of it.
    Frustrum cube = unitCube();
    EXPECT_EQ(BoundingBox(Point(1, -0.5f, -0.5f), Point(2, 0.5f, 0.5f)).intersects(cube), -1);
    EXPECT_EQ(BoundingBox(Point(0.5f, -0.5f, -0.5f), Point(2, 0.5f, 0.5f)).intersects(cube), 0);
}

}  // namespace
