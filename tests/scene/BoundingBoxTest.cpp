#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "scene/BoundingBox.h"
#include "scene/Transformation.h"

using Velun::BoundingBox;
using Velun::BoundingVolume;
using Velun::Point;

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

TEST(BoundingBoxTest, MergeWithTransformBoundsTheTransformedCorners) {
    Velun::Transformation t;
    t.rotateZ(static_cast<float>(M_PI / 2), false);
    t.translate(10, 0, 0, false);
    BoundingBox local(Point(0, 0, 0), Point(2, 1, 1));
    BoundingBox world;
    EXPECT_TRUE(world.merge(local, t.getLocalTransformation()));
    EXPECT_NEAR(world.getMin()[0], 9, 1e-5f);
    EXPECT_NEAR(world.getMax()[0], 10, 1e-5f);
    EXPECT_NEAR(world.getMin()[1], 0, 1e-5f);
    EXPECT_NEAR(world.getMax()[1], 2, 1e-5f);

    std::unique_ptr<BoundingVolume> moved(local.transformed(t.getLocalTransformation()));
    BoundingBox const& movedBox = static_cast<BoundingBox const&>(*moved);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(movedBox.getMin()[i], world.getMin()[i]);
        EXPECT_EQ(movedBox.getMax()[i], world.getMax()[i]);
    }
    std::unique_ptr<BoundingVolume> none(BoundingBox().transformed(t.getLocalTransformation()));
    EXPECT_EQ(none->getState(), BoundingVolume::StateEmpty);
}

TEST(BoundingBoxTest, AffineMergeEqualsTheEightCornersExactly) {
    Velun::Transformation t;
    t.rotate(0.83f, 0.3f, -1.0f, 0.6f, false);
    t.scale(1.5f, -0.5f, 2.0f, true);
    t.translate(-3.25f, 7.5f, 0.125f, false);
    Matrix4 const& m = t.getLocalTransformation();
    BoundingBox local(Point(-1.1f, 0.2f, -0.7f), Point(0.9f, 1.3f, 2.2f));

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
