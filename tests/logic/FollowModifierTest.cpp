#include "logic/FollowModifier.h"

#include <gtest/gtest.h>

#include "core/VelunCore.h"
#include "logic/EventManager.h"
#include "scene/Branch.h"
#include "scene/Light.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace {

const float HalfPi = 1.5707963f;

// Keeps the follower at height 2, or vetoes every step.
class GroundedFollower : public FollowModifier {
public:
    explicit GroundedFollower(bool veto) : mVeto(veto), mChecks(0) {}
    bool mVeto;
    int mChecks;

protected:
    bool checkPosition(Point const&, Dorvan::TVector<float, 3> const&, float&, Point& position, float,
                       std::int64_t) override {
        ++mChecks;
        position[1] = 2.0f;
        return !mVeto;
    }
};

class FollowModifierTest : public ::testing::Test {
protected:
    void SetUp() override {
        VelunCore::getSingleton().startup();
        mScene = &VelunCore::getSingleton().getSceneManager().createSceneGraph();
        mSourcePlace = new TransformationNode();
        mSource = new Light();
        mSourcePlace->setChild(*mSource);
        mScene->getRoot()->attachChild(*mSourcePlace);
    }
    void TearDown() override {
        delete mSource;
        delete mSourcePlace;
        VelunCore::getSingleton().shutdown();
    }

    // Puts the source and lets the update pass give it its world transformation.
    void placeSource(float x, float y, float z, float angleY) {
        mSourcePlace->reset();
        mSourcePlace->rotateY(angleY, false);
        mSourcePlace->translate(x, y, z, false);
        mScene->getUpdateTraverser()->run(0);
    }

    void startFollowing(FollowModifier& modifier) {
        modifier.setSource(*mSource);
        modifier.setFollowerTransformation(mFollower);
        modifier.setState(LogicElement::StateRunning);
    }

    SceneGraph* mScene;
    TransformationNode* mSourcePlace;
    Light* mSource;
    Transformation mFollower;
};

TEST_F(FollowModifierTest, ClosesOnTheSourceAtTenPerSecond) {
    placeSource(10.0f, 0.0f, 0.0f, 0.0f);
    FollowModifier modifier;
    startFollowing(modifier);
    modifier.run(1000);
    EXPECT_FLOAT_EQ(0.0f, modifier.getPosition()[0]);
    modifier.run(1050);
    EXPECT_NEAR(5.0f, modifier.getPosition()[0], 1e-5f);
    EXPECT_NEAR(5.0f, mFollower.getLocalTransformation()(0, 3), 1e-5f);
    modifier.run(1075);
    EXPECT_NEAR(6.25f, modifier.getPosition()[0], 1e-4f);
}

TEST_F(FollowModifierTest, LongFrameLandsOnTheSourceWithoutOvershoot) {
    placeSource(10.0f, 0.0f, -4.0f, 0.0f);
    FollowModifier modifier;
    startFollowing(modifier);
    modifier.run(1000);
    modifier.run(1500);
    EXPECT_FLOAT_EQ(10.0f, modifier.getPosition()[0]);
    EXPECT_FLOAT_EQ(-4.0f, modifier.getPosition()[2]);
}

TEST_F(FollowModifierTest, FacesTheSourceDirection) {
    placeSource(0.0f, 0.0f, 0.0f, -HalfPi);
    FollowModifier modifier;
    startFollowing(modifier);
    modifier.run(1000);
    modifier.run(1020);
    EXPECT_NEAR(3.0f * HalfPi, modifier.getRotationY(), 1e-4f);
    // The follower's +Z axis points where the source's does: world -X.
    Dorvan::Matrix<float, 4> const& m = mFollower.getLocalTransformation();
    EXPECT_NEAR(-1.0f, m(0, 2), 1e-5f);
    EXPECT_NEAR(0.0f, m(2, 2), 1e-5f);
}

TEST_F(FollowModifierTest, OffsetPlacesTheFollowerInTheSourceFrame) {
    placeSource(4.0f, 0.0f, 0.0f, HalfPi);
    FollowModifier modifier;
    modifier.getOffsetTransformation().translate(0.0f, 1.0f, -3.0f, false);
    modifier.setToPoint(Point(4.0f, 0.0f, 0.0f), 0.0f);
    startFollowing(modifier);
    modifier.run(1000);
    modifier.run(1020);
    // Three units behind the source along its heading (+X), one above.
    Dorvan::Matrix<float, 4> const& m = mFollower.getLocalTransformation();
    EXPECT_NEAR(1.0f, m(0, 3), 1e-5f);
    EXPECT_NEAR(1.0f, m(1, 3), 1e-5f);
    EXPECT_NEAR(0.0f, m(2, 3), 1e-5f);
}

TEST_F(FollowModifierTest, CheckPositionCanAdjustTheStep) {
    placeSource(10.0f, 0.0f, 0.0f, 0.0f);
    GroundedFollower modifier(false);
    startFollowing(modifier);
    modifier.run(1000);
    modifier.run(1050);
    EXPECT_EQ(1, modifier.mChecks);
    EXPECT_NEAR(5.0f, mFollower.getLocalTransformation()(0, 3), 1e-5f);
    EXPECT_FLOAT_EQ(2.0f, mFollower.getLocalTransformation()(1, 3));
}

TEST_F(FollowModifierTest, SetToSourceTakesTheHeadingAndKeepsThePosition) {
    placeSource(3.0f, 0.0f, 0.0f, HalfPi);
    FollowModifier modifier;
    modifier.setToPoint(Point(1.0f, 2.0f, 3.0f), 0.5f);
    EXPECT_FLOAT_EQ(0.5f, modifier.getRotationY());
    modifier.setSource(*mSource);
    modifier.setToSource();
    EXPECT_NEAR(HalfPi, modifier.getRotationY(), 1e-5f);
    EXPECT_FLOAT_EQ(1.0f, modifier.getPosition()[0]);
    EXPECT_FLOAT_EQ(3.0f, modifier.getPosition()[2]);
}

TEST_F(FollowModifierTest, SetToSourceWithoutSourceReportsIt) {
    FollowModifier modifier;
    testing::internal::CaptureStderr();
    modifier.setToSource();
    EXPECT_EQ("FollowModifier::setToSource: no source node is set\n", testing::internal::GetCapturedStderr());
    EXPECT_FLOAT_EQ(0.0f, modifier.getRotationY());
}

}  // namespace
