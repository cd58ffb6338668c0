#include <gtest/gtest.h>

#include <cmath>

#include "scene/Color.h"
#include "scene/Plane.h"
#include "scene/Point.h"
#include "scene/Point2D.h"

using Dorvan::TVector;
using Velun::Color;
using Velun::Plane;
using Velun::Point;
using Velun::Point2D;

namespace {

TEST(ValueTypesTest, PointIsAlwaysNormalised) {
    Point origin;
    EXPECT_EQ(origin[3], 1.0f);
    EXPECT_EQ(origin[0], 0.0f);

    Point divided(TVector<float, 4>(2, 4, 6, 2));
    EXPECT_FLOAT_EQ(divided[0], 1);
    EXPECT_FLOAT_EQ(divided[1], 2);
    EXPECT_FLOAT_EQ(divided[2], 3);
    EXPECT_FLOAT_EQ(divided[3], 1);

    Point direction(TVector<float, 4>(5, 6, 7, 0));
    EXPECT_EQ(direction[0], 0.0f);
    EXPECT_EQ(direction[2], 0.0f);
    EXPECT_EQ(direction[3], 1.0f);

    // The sum of two points has w 2, and a Point made from it is their midpoint.
    Point mid = Point(Point(0, 0, 0) + Point(2, 4, 6));
    EXPECT_FLOAT_EQ(mid[1], 2);
    EXPECT_EQ((Point(1, 1, 1) - Point(0, 0, 0))[3], 0.0f);

    TVector<float, 3> xyz = Point(1, 2, 3);
    EXPECT_EQ(xyz[2], 3.0f);
}

TEST(ValueTypesTest, Point2DKeepsCoordinatesOfADirection) {
    Point2D kept(TVector<float, 3>(3, 4, 0));
    EXPECT_EQ(kept[0], 3.0f);
    EXPECT_EQ(kept[1], 4.0f);
    EXPECT_EQ(kept[2], 1.0f);

    Point2D divided(TVector<float, 3>(3, 4, 2));
    EXPECT_FLOAT_EQ(divided[0], 1.5f);

    TVector<float, 4> v(1, 2, 3, 4);
    Point2D dropX(v, 0), dropY(v, 1), dropZ(v, 2);
    EXPECT_EQ(dropX[0], 2.0f);
    EXPECT_EQ(dropX[1], 3.0f);
    EXPECT_EQ(dropY[0], 1.0f);
    EXPECT_EQ(dropY[1], 3.0f);
    EXPECT_EQ(dropZ[0], 1.0f);
    EXPECT_EQ(dropZ[1], 2.0f);
    EXPECT_EQ(dropZ[2], 4.0f);

    EXPECT_FLOAT_EQ(Point2D(0, 1).angle(), static_cast<float>(M_PI / 2));
}

TEST(ValueTypesTest, VectorArithmetic) {
    TVector<float, 3> a(3, 0, 4);
    EXPECT_FLOAT_EQ(a.length(), 5);
    TVector<float, 3> n = a.normalized();
    EXPECT_FLOAT_EQ(n[0], 0.6f);
    EXPECT_FLOAT_EQ(n[2], 0.8f);
    EXPECT_FLOAT_EQ((-a)[0], -3);
    EXPECT_FLOAT_EQ((a * 2)[2], 8);

    TVector<float, 4> zero(0, 0, 0, 0);
    TVector<float, 4> stillZero = zero.normalized();
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(stillZero[i], 0.0f);

    // The length of a 4-vector runs over w too.
    EXPECT_FLOAT_EQ((TVector<float, 4>(1, 1, 1, 1).length()), 2);

    TVector<float, 3> z = Dorvan::cross(TVector<float, 3>(1, 0, 0), TVector<float, 3>(0, 1, 0));
    EXPECT_EQ(z[2], 1.0f);
}

TEST(ValueTypesTest, ColorDefaultsAndPixelData) {
    Color black;
    EXPECT_EQ(black, Color(0, 0, 0, 1));
    EXPECT_EQ(Color(0.5f, 0.25f, 1).a, 1.0f);

    float rg[] = {0.1f, 0.2f};
    Color fromFloats(rg, 2);
    EXPECT_EQ(fromFloats, Color(0.1f, 0.2f, 1, 1));

    unsigned char bytes[] = {255, 0, 51, 102};
    Color fromBytes(bytes, 4);
    EXPECT_FLOAT_EQ(fromBytes.r, 1.0f);
    EXPECT_EQ(fromBytes.g, 0.0f);
    EXPECT_FLOAT_EQ(fromBytes.b, 0.2f);
    EXPECT_FLOAT_EQ(fromBytes.a, 0.4f);
    EXPECT_EQ(Color(bytes, 1).g, 1.0f);
    EXPECT_EQ(Color::Luminance, 6);
}

TEST(ValueTypesTest, PlaneDistancesAndNormalisation) {
    Plane p;
    p.set(0, 0, 2, 2);
    EXPECT_FLOAT_EQ(p.distance(Point(0, 0, 1)), 4);
    EXPECT_TRUE(p.isInFront(Point(0, 0, -1)));
    EXPECT_FALSE(p.isInFront(Point(0, 0, -2)));

    // All four coefficients are divided by the length of the 4-vector.
    p.normalize();
    EXPECT_NEAR(p.getCoefficients()[2], 0.7071f, 1e-4f);
    EXPECT_NEAR(p.getCoefficients()[3], 0.7071f, 1e-4f);
    EXPECT_NEAR(p.getNormal()[2], 0.7071f, 1e-4f);
    EXPECT_GT(p.distance(Point(0, 0, 1)), 0);

    Plane q(TVector<float, 4>(1, 0, 0, -1));
    EXPECT_FLOAT_EQ(q.distance(Point(3, 9, 9)), 2);
}

}  // namespace
