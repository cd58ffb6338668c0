#include "SceneFixture.h"

#include <cmath>

using SceneTest::BoxLeaf;
using Velun::Node;
using Velun::Point;
using Velun::Transformation;
using Velun::TransformationNode;

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
