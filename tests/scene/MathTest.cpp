#include <cmath>

#include "SceneFixture.h"
#include "scene/Frustrum.h"

using namespace Velun;
using namespace SceneTest;

namespace {

Matrix4 fromRows(std::initializer_list<float> values) {
    Matrix4 m;
    int i = 0;
    for (float v : values)
        m.m[i++] = v;
    m.mIdentity = false;
    return m;
}

Point place(Matrix4 const& m, Point const& p) { return Point(m * p); }
Point place(Transformation const& t, Point const& p) { return place(t.getLocalTransformation(), p); }

TEST(MatrixTest, ConventionsHoldAgainstHandComputedProducts) {
    // A translation by (1, 2, 3) lives in m[3], m[7], m[11] and moves a point as M * p.
    Matrix4 t = fromRows({1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1});
    expectPoint(place(t, Point(1, 1, 1)), 2, 3, 4);
    // A rotation by 90 degrees about Z: x goes to y. t * r applies r first.
    Matrix4 r = fromRows({0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    expectPoint(place(r.leftMultiplied(t), Point(1, 0, 0)), 1, 3, 3);

    Matrix4 a = fromRows({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    Matrix4 b = fromRows({2, 0, 0, 1, 0, 3, 0, 0, 1, 0, 1, 0, 0, 0, 0, 1});
    expectNear(a * b, fromRows({5, 6, 3, 5, 17, 18, 7, 13, 29, 30, 11, 21, 41, 42, 15, 29}), 0);
    expectNear(a.transposed(), fromRows({1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16}), 0);

    // The identity short cuts carry the flag; any write through the accessor clears it.
    Matrix4 id = Matrix4::identity();
    EXPECT_FALSE((id * b).mIdentity);
    expectNear(b * id, b, 0);
    EXPECT_EQ((id * Dorvan::TVector<float, 4>(1, 2, 3, 4))[3], 4);
    Matrix4 written = Matrix4::identity(), scaled = Matrix4::identity();
    written(0, 0) = 1.0f;
    scaled *= 1.0f;
    EXPECT_FALSE(written.mIdentity);
    EXPECT_FALSE(scaled.mIdentity);
}

// Which axes "local" moves along is shown by the velocity modifier's tests.
TEST(TransformationTest, MatricesComposeOnTheRightAndQuarterTurnsAreRightHanded) {
    Transformation scaled, t, u, flat;
    scaled.translate(Dorvan::TVector<float, 3>(1, 2, 3), false);
    scaled.scale(2, false);
    expectPoint(place(scaled, Point(1, 0, 0)), 4, 4, 6);

    t.translate(1, 0, 0, false);
    Matrix4 m = Matrix4::identity();
    m(0, 0) = 2.0f;
    t.multMatrix(m, 0.5f);  // any non-zero flag composes on the right: the scale acts first
    expectPoint(place(t, Point(1, 0, 0)), 3, 0, 0);
    t.multMatrix(m, 0.0f);
    expectPoint(place(t, Point(1, 0, 0)), 6, 0, 0);
    t.reset();
    EXPECT_TRUE(t.getLocalTransformation().mIdentity);
    EXPECT_TRUE(t.getInverseTransformation().mIdentity);

    Dorvan::Matrix<float, 3> upper = Dorvan::Matrix<float, 3>::identity();
    upper(1, 1) = 3.0f;
    u.multMatrix(upper, 1.0f);
    expectPoint(place(u, Point(0, 1, 0)), 0, 3, 0);

    // A flat transformation has no inverse and gives the identity.
    flat.scale(0, 1, 1, false);
    EXPECT_TRUE(flat.getInverseTransformation().mIdentity);
    Matrix4 placed = Matrix4::identity();
    placed(1, 3) = 4.0f;
    flat.setLocalTransformation(placed);
    EXPECT_FLOAT_EQ(flat.getInverseTransformation().m[7], -4.0f);

    // A quarter turn about each axis is right-handed, also about a given axis or line.
    float const q = static_cast<float>(M_PI / 2);
    Transformation x, y, z, axis, line;
    x.rotateX(q, false);
    y.rotateY(q, false);
    z.rotateZ(q, false);
    axis.rotate(q, 0, 0, 2, false);
    line.rotate(q, Dorvan::TVector<float, 3>(1, 0, 0), Dorvan::TVector<float, 3>(1, 0, 3), false);
    expectPoint(place(x, Point(0, 1, 0)), 0, 0, 1);
    expectPoint(place(y, Point(0, 0, 1)), 1, 0, 0);
    expectPoint(place(z, Point(1, 0, 0)), 0, 1, 0);
    expectPoint(place(axis, Point(1, 0, 0)), 0, 1, 0);
    expectPoint(place(line, Point(2, 0, 0)), 1, 1, 0);
}

BoundingBox box(float x0, float y0, float z0, float x1, float y1, float z1) {
    return BoundingBox(Point(x0, y0, z0), Point(x1, y1, z1));
}

BoundingBox infinite() {
    BoundingBox b;
    b.setInfinite();
    return b;
}

TEST(BoundingBoxTest, MergesOfEmptyInfiniteAndPlacedVolumes) {
    BoundingBox unit = box(0, 0, 0, 1, 1, 1), target;
    EXPECT_FALSE(unit.merge(BoundingBox()));
    EXPECT_EQ(unit.getMax()[0], 1.0f);
    EXPECT_TRUE(unit.merge(infinite()));
    EXPECT_EQ(unit.getState(), BoundingVolume::StateInfinite);
    // An infinite box absorbs everything and reports no change.
    EXPECT_FALSE(unit.merge(box(5, 5, 5, 6, 6, 6)));
    EXPECT_FALSE(unit.merge(Point(9, 9, 9)));

    EXPECT_TRUE(target.merge(box(1, 1, 1, 2, 2, 2)));
    EXPECT_EQ(target.getState(), BoundingVolume::StateBounded);
    EXPECT_FALSE(target.merge(box(1.5f, 1.5f, 1.5f, 2, 2, 2)));

    // Merged through a matrix, a box equals its eight placed corners exactly. Affine
    // matrices take a short cut, projective ones transform and divide every corner.
    Transformation t;
    t.rotate(0.83f, 0.3f, -1.0f, 0.6f, false);
    t.scale(1.5f, -0.5f, 2.0f, true);
    t.translate(-3.25f, 7.5f, 0.125f, false);
    // w shrinks towards the far corner, which so becomes the largest in every axis.
    Matrix4 projective = Matrix4::identity();
    projective(3, 0) = projective(3, 1) = projective(3, 2) = -0.1f;
    projective(3, 3) = 1.5f;
    BoundingBox local = box(0.2f, 0.2f, 0.1f, 0.9f, 1.3f, 2.2f);
    for (Matrix4 const& m : {t.getLocalTransformation(), projective}) {
        BoundingBox fast, corners;
        fast.merge(local, m);
        for (int i = 0; i < 8; ++i)
            corners.merge(place(m, local.getCorner(i)));
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(fast.getMin()[i], corners.getMin()[i]);
            EXPECT_EQ(fast.getMax()[i], corners.getMax()[i]);
        }
    }
}

// -1 apart, 0 overlapping, 1 the other inside this one.
TEST(BoundingBoxTest, IntersectsOtherBoxesAlsoPlacedByAMatrix) {
    struct Case {
        char const* name;
        BoundingBox self, other;
        int plain, turned;
        float angle, x;
    };
    BoundingBox const unit = box(0, 0, 0, 1, 1, 1), empty;
    Case const cases[] = {
        {"apart", unit, box(2, 0, 0, 3, 1, 1), -1, -1, 0, -4.5f},
        {"touching corner", unit, box(1, 1, 1, 3, 3, 3), 0, 0, 0, -0.5f},
        {"inside counts as overlap", unit, box(0.2f, 0.2f, 0.2f, 0.8f, 0.8f, 0.8f), 0, 0, 0, 0},
        // Turned 45 degrees, the unit box reaches 0.71 left of its origin.
        {"turned, reaching", unit, unit, 0, 0, 0.785398f, 1.6f},
        {"turned, short", unit, unit, 0, -1, 0.785398f, 1.8f},
        {"empty other", unit, empty, -1, -1, 0, 0},
        {"empty self", empty, unit, -1, -1, 0, 0},
        {"infinite other", unit, infinite(), 0, 0, 0, 9},
        {"infinite self", infinite(), unit, 1, 1, 0, 9},
        {"infinite self, empty other", infinite(), empty, -1, -1, 0, 0},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.self.intersects(c.other), c.plain);
        EXPECT_EQ(c.self.intersects(c.other, turnedAndMoved(c.angle, c.x)), c.turned);
    }
}

TEST(FrustrumTest, PerspectiveProjectionPlanesAndBoxes) {
    Frustrum f(Matrix4::identity(), CameraSettings::Perspective, CameraSettings::AspectFovXFromY, 0.1, 1000.0,
               90.0f, 90.0f, 1.0f);
    float const depth = -1000.1f / 999.9f, offset = -200.0f / 999.9f;
    expectNear(f.getProjectionMatrix(), fromRows({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, depth, offset, 0, 0, -1, 0}),
               1e-6f);
    EXPECT_NEAR(f.getRight(), 0.1f, 1e-7f);
    EXPECT_NEAR(f.getBottom(), -0.1f, 1e-7f);

    // Each plane has the point ahead in front of it and its own outside point behind.
    Point const outside[] = {Point(5, 0, -1), Point(-5, 0, -1),   Point(0, -5, -1),
                             Point(0, 5, -1), Point(0, 0, -2000), Point(0, 0, 1)};
    for (int i = 0; i < 6; ++i) {
        EXPECT_GT(f.getPlane(i).distance(Point(0, 0, -1)), 0.0f) << "plane " << i;
        EXPECT_LT(f.getPlane(i).distance(outside[i]), 0.0f) << "plane " << i;
    }
    EXPECT_EQ(box(-0.1f, -0.1f, -2, 0.1f, 0.1f, -1).intersects(f), 1);
    EXPECT_EQ(box(-5, -0.1f, -2, 0.1f, 0.1f, -1).intersects(f), 0);
    EXPECT_EQ(box(-1, -1, 1, 1, 1, 2).intersects(f), -1);
    EXPECT_EQ(BoundingBox().intersects(f), -1);
    EXPECT_EQ(infinite().intersects(f), 1);

    // Identity view and projection: the planes are x, y, z = -1 and 1. Corners exactly on
    // a plane do not count as in front of it.
    Frustrum cube(Matrix4::identity(), CameraSettings::Orthographic, CameraSettings::AspectFixed, 1.0, 10.0,
                  0.0f, 0.0f, 1.0f);
    EXPECT_EQ(box(1, -0.5f, -0.5f, 2, 0.5f, 0.5f).intersects(cube), -1);
    EXPECT_EQ(box(0.5f, -0.5f, -0.5f, 2, 0.5f, 0.5f).intersects(cube), 0);
}

}  // namespace
