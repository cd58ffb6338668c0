#include <gtest/gtest.h>

#include <cmath>

#include "core/ProcessManager.h"
#include "core/VelunCore.h"
#include "logic/EventManager.h"
#include "logic/FollowModifier.h"
#include "logic/VelocityModifier.h"
#include "scene/Branch.h"
#include "scene/Light.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"
#include "support/Engine.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace {

// Counts its runs and returns a chosen result; tells a flag when it ends.
class CountingModifier : public Modifier, public Process {
public:
    explicit CountingModifier(bool* destroyed = nullptr)
        : mRuns(0), mResult(0), mLastTimestamp(-1), mDestroyed(destroyed) {}
    ~CountingModifier() override {
        if (mDestroyed)
            *mDestroyed = true;
    }
    int run(std::int64_t timestamp) override {
        ++mRuns;
        mLastTimestamp = timestamp;
        return mResult;
    }
    int mRuns;
    int mResult;
    std::int64_t mLastTimestamp;
    bool* mDestroyed;
};

// A modifier that is no Process.
class InertModifier : public Modifier {};

// Takes itself out of the manager while it runs.
class SelfRemovingModifier : public Modifier, public Process {
public:
    explicit SelfRemovingModifier(bool* destroyed) : mDestroyed(destroyed) {}
    ~SelfRemovingModifier() override { *mDestroyed = true; }
    void setSelf(SharedPtr<Modifier> self) { mSelf = self; }
    int run(std::int64_t) override {
        SharedPtr<Modifier> self = mSelf;
        mSelf.release();
        VelunCore::getSingleton().getEventManager().unregisterModifier(self);
        return 7;
    }
    SharedPtr<Modifier> mSelf;
    bool* mDestroyed;
};

class EventManagerTest : public VelunTest::EngineTest {
protected:
    EventManager& manager() { return VelunCore::getSingleton().getEventManager(); }
    int runAll(std::int64_t timestamp) {
        int last = 0;
        std::vector<Process*>& processes = *manager().getProcessList();
        for (std::size_t i = 0; i < processes.size(); ++i)
            last = processes[i]->run(timestamp);
        return last;
    }
};

TEST_F(EventManagerTest, NewModifierIsDisabledUntilSwitchedOn) {
    SharedPtr<CountingModifier> modifier(new CountingModifier());
    EXPECT_EQ(LogicElement::StateDisabled, modifier->getState());
    manager().registerModifier(modifier);
    ASSERT_EQ(1u, manager().getProcessList()->size());

    runAll(1000);
    EXPECT_EQ(0, modifier->mRuns);

    modifier->setState(LogicElement::StateReady);
    runAll(2000);
    EXPECT_EQ(1, modifier->mRuns);
    EXPECT_EQ(2000, modifier->mLastTimestamp);

    modifier->setState(LogicElement::StateDisabled);
    runAll(3000);
    EXPECT_EQ(1, modifier->mRuns);
}

TEST_F(EventManagerTest, RegistrationKeepsTheModifierAliveUntilShutdown) {
    bool destroyed = false;
    {
        SharedPtr<Modifier> modifier(new CountingModifier(&destroyed));
        manager().registerModifier(modifier);
        EXPECT_EQ(modifier.get(), manager().getElementById(modifier->getElementId()).get());
    }
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(1u, manager().getElementCount());
    VelunCore::getSingleton().shutdown();
    EXPECT_TRUE(destroyed);
    VelunCore::getSingleton().startup();
}

TEST_F(EventManagerTest, ModifierRegisteredTwiceRunsOnce) {
    SharedPtr<CountingModifier> modifier(new CountingModifier());
    modifier->setState(LogicElement::StateRunning);
    manager().registerModifier(modifier);
    manager().registerModifier(modifier);
    runAll(10);
    EXPECT_EQ(1, modifier->mRuns);
    EXPECT_EQ(1u, manager().getElementCount());
}

TEST_F(EventManagerTest, NullModifierIsReported) {
    testing::internal::CaptureStderr();
    manager().registerModifier(SharedPtr<Modifier>());
    EXPECT_EQ("EventManager::registerModifier: the modifier is null\n",
              testing::internal::GetCapturedStderr());
    EXPECT_EQ(0u, manager().getProcessList()->size());
    EXPECT_FALSE(manager().unregisterModifier(SharedPtr<Modifier>()));
}

TEST_F(EventManagerTest, UnregisterRemovesEntryAndAdapter) {
    SharedPtr<CountingModifier> kept(new CountingModifier());
    SharedPtr<CountingModifier> removed(new CountingModifier());
    kept->setState(LogicElement::StateRunning);
    removed->setState(LogicElement::StateRunning);
    manager().registerModifier(kept);
    manager().registerModifier(removed);

    EXPECT_TRUE(manager().unregisterModifier(removed));
    EXPECT_FALSE(manager().unregisterModifier(removed));
    EXPECT_EQ(1u, manager().getProcessList()->size());
    EXPECT_EQ(1u, manager().getElementCount());
    EXPECT_EQ(1, removed.getRefCount());

    runAll(10);
    EXPECT_EQ(1, kept->mRuns);
    EXPECT_EQ(0, removed->mRuns);
}

TEST_F(EventManagerTest, ModifierCanUnregisterItselfWhileRunning) {
    bool destroyed = false;
    SelfRemovingModifier* raw = new SelfRemovingModifier(&destroyed);
    {
        SharedPtr<Modifier> modifier(raw);
        raw->setSelf(modifier);
        modifier->setState(LogicElement::StateRunning);
        manager().registerModifier(modifier);
    }
    EXPECT_EQ(7, runAll(10));
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(0u, manager().getProcessList()->size());
    EXPECT_EQ(0u, manager().getElementCount());
}

TEST(EventManagerLifetime, ElementReleasedAfterShutdownEndsQuietly) {
    VelunCore::getSingleton().startup();
    SharedPtr<CountingModifier> modifier(new CountingModifier());
    VelunCore::getSingleton().getEventManager().registerModifier(modifier);
    VelunCore::getSingleton().shutdown();
    EXPECT_EQ(1, modifier.getRefCount());
    modifier.release();
}

}  // namespace

namespace {

const float HalfPi = 1.5707963f;

float tx(Transformation const& t) { return t.getLocalTransformation()(0, 3); }
float ty(Transformation const& t) { return t.getLocalTransformation()(1, 3); }
float tz(Transformation const& t) { return t.getLocalTransformation()(2, 3); }

using VelocityModifierTest = VelunTest::EngineTest;

TEST_F(VelocityModifierTest, MovesBySpeedTimesElapsedTimeAndNotAtFirstRun) {
    Transformation transformation;
    VelocityModifier modifier(transformation);
    modifier.setTranslateX(1.0f);
    modifier.setState(LogicElement::StateRunning);

    EXPECT_EQ(0, modifier.run(1000));
    EXPECT_FLOAT_EQ(0.0f, tx(transformation));
    EXPECT_EQ(0, modifier.run(1500));
    EXPECT_FLOAT_EQ(0.5f, tx(transformation));
    modifier.run(3500);
    EXPECT_FLOAT_EQ(2.5f, tx(transformation));
}

TEST_F(VelocityModifierTest, DisabledOrReadyModifierDoesNotMoveAndPausesAreNotCaughtUp) {
    Transformation transformation;
    VelocityModifier modifier(transformation);
    modifier.setTranslateZ(1.0f);

    modifier.run(1000);
    modifier.run(2000);
    EXPECT_FLOAT_EQ(0.0f, tz(transformation));

    modifier.setState(LogicElement::StateReady);
    modifier.run(3000);
    modifier.run(4000);
    EXPECT_FLOAT_EQ(0.0f, tz(transformation));

    // Ready kept the time: only the last frame counts.
    modifier.setState(LogicElement::StateRunning);
    modifier.run(4250);
    EXPECT_FLOAT_EQ(0.25f, tz(transformation));

    // After a stop the first run only takes the time again.
    modifier.setState(LogicElement::StateDisabled);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(9000);
    EXPECT_FLOAT_EQ(0.25f, tz(transformation));
    modifier.run(9500);
    EXPECT_FLOAT_EQ(0.75f, tz(transformation));
}

TEST_F(VelocityModifierTest, TranslationFollowsParentOrOwnAxes) {
    Transformation parentAxes;
    Transformation ownAxes;
    parentAxes.rotateZ(HalfPi, false);
    ownAxes.rotateZ(HalfPi, false);
    VelocityModifier alongParent(parentAxes);
    VelocityModifier alongOwn(ownAxes);
    alongOwn.setTransformGlobal(true);
    EXPECT_TRUE(alongOwn.doTransformGlobal());
    for (VelocityModifier* m : {&alongParent, &alongOwn}) {
        m->setTranslateX(1.0f);
        m->setState(LogicElement::StateRunning);
        m->run(1000);
        m->run(2000);
    }
    EXPECT_NEAR(1.0f, tx(parentAxes), 1e-6f);
    EXPECT_NEAR(0.0f, ty(parentAxes), 1e-6f);
    EXPECT_NEAR(0.0f, tx(ownAxes), 1e-6f);
    EXPECT_NEAR(1.0f, ty(ownAxes), 1e-6f);
}

TEST_F(VelocityModifierTest, RotationSpinsTheNodeInPlace) {
    Transformation transformation;
    transformation.translate(5.0f, 0.0f, 0.0f, false);
    VelocityModifier modifier(transformation);
    modifier.setRotateY(HalfPi);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(1000);
    modifier.run(2000);

    Dorvan::Matrix<float, 4> const& m = transformation.getLocalTransformation();
    EXPECT_NEAR(5.0f, m(0, 3), 1e-5f);
    EXPECT_NEAR(0.0f, m(2, 3), 1e-5f);
    // Local +Z now points along +X.
    EXPECT_NEAR(1.0f, m(0, 2), 1e-5f);
    EXPECT_NEAR(0.0f, m(2, 2), 1e-5f);
}

TEST_F(VelocityModifierTest, MarksItsNodeInEveryFrameEvenAtZeroSpeed) {
    SceneGraph& scene = VelunCore::getSingleton().getSceneManager().createSceneGraph();
    TransformationNode node;
    Light light;
    node.setChild(light);
    scene.getRoot()->attachChild(node);
    scene.getUpdateTraverser()->run(0);
    ASSERT_EQ(Node::StatusUpdated, node.getNodeStatus());

    VelocityModifier modifier(node);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(1000);
    EXPECT_EQ(Node::StatusUpdated, node.getNodeStatus());
    modifier.run(1016);
    EXPECT_EQ(Node::StatusModified, node.getNodeStatus());
    scene.getRoot()->detachChild(node.getNodeId());
}

}  // namespace

namespace {

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
