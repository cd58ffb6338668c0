#include <gtest/gtest.h>

#include <cmath>

#include "scene/BoundingBox.h"
#include "scene/Frustrum.h"

using Velun::BoundingBox;
using Velun::CameraSettings;
using Velun::Frustrum;
using Velun::Point;

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

TEST(FrustrumTest, FrustrumDistanceCullsAndOrdersByDepth) {
    Frustrum f = perspective();
    EXPECT_EQ(BoundingBox().getFrustrumDistance(f), -1.0f);
    BoundingBox infinite;
    infinite.setInfinite();
    EXPECT_EQ(infinite.getFrustrumDistance(f), 0.0f);

    float nearBox = BoundingBox(Point(-0.5f, -0.5f, -3), Point(0.5f, 0.5f, -2)).getFrustrumDistance(f);
    float farBox = BoundingBox(Point(-0.5f, -0.5f, -30), Point(0.5f, 0.5f, -20)).getFrustrumDistance(f);
    EXPECT_GT(nearBox, 0.0f);
    EXPECT_GT(farBox, nearBox);
    EXPECT_LT(BoundingBox(Point(50, -0.5f, -3), Point(51, 0.5f, -2)).getFrustrumDistance(f), 0.0f);
    EXPECT_LT(BoundingBox(Point(-1, -1, 1), Point(1, 1, 2)).getFrustrumDistance(f), 0.0f);
}

}  // namespace
