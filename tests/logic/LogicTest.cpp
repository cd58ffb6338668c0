#include "logic/EventManager.h"
#include "logic/FollowModifier.h"
#include "logic/VelocityModifier.h"
#include "scene/Light.h"
#include "scene/SceneFixture.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"

using Dorvan::SharedPtr;
using namespace Velun;
using SceneTest::chain;
using SceneTest::expectPoint;

namespace {

// Counts its runs; tells a flag when it ends. Given its own handle, it takes itself out
// of the manager while it runs.
class CountingModifier : public Modifier, public Process {
public:
    explicit CountingModifier(bool* destroyed = nullptr) : mDestroyed(destroyed) {}
    ~CountingModifier() override {
        if (mDestroyed)
            *mDestroyed = true;
    }
    int run(std::int64_t timestamp) override {
        ++mRuns;
        mLastTimestamp = timestamp;
        SharedPtr<Modifier> self = mSelf;
        mSelf.release();
        return self && VelunCore::getSingleton().getEventManager().unregisterModifier(self) ? 7 : 0;
    }
    int mRuns = 0;
    std::int64_t mLastTimestamp = -1;
    bool* mDestroyed;
    SharedPtr<Modifier> mSelf;
};

class EventManagerTest : public VelunTest::EngineTest {
protected:
    EventManager& manager() { return core.getEventManager(); }
    int runAll(std::int64_t timestamp) {
        int last = 0;
        std::vector<Process*>& processes = *manager().getProcessList();
        for (std::size_t i = 0; i < processes.size(); ++i)
            last = processes[i]->run(timestamp);
        return last;
    }
};

TEST_F(EventManagerTest, UnregisteringWorksDuringTheOwnRunAndAModifierRunsOnceAPassWhileSwitchedOn) {
    testing::internal::CaptureStderr();
    manager().registerModifier(SharedPtr<Modifier>());
    EXPECT_EQ("EventManager::registerModifier: the modifier is null\n",
              testing::internal::GetCapturedStderr());
    EXPECT_EQ(0u, manager().getProcessList()->size());
    EXPECT_FALSE(manager().unregisterModifier(SharedPtr<Modifier>()));

    SharedPtr<CountingModifier> kept(new CountingModifier()), removed(new CountingModifier());
    kept->setState(LogicElement::StateRunning);
    removed->setState(LogicElement::StateRunning);
    manager().registerModifier(kept);
    manager().registerModifier(removed);
    EXPECT_TRUE(manager().unregisterModifier(removed));
    EXPECT_FALSE(manager().unregisterModifier(removed));
    EXPECT_EQ(1u, manager().getElementCount());
    EXPECT_EQ(1, removed.getRefCount());
    runAll(10);
    EXPECT_EQ(1, kept->mRuns);
    EXPECT_EQ(0, removed->mRuns);
    manager().unregisterModifier(kept);

    bool destroyed = false;
    CountingModifier* raw = new CountingModifier(&destroyed);
    {
        SharedPtr<Modifier> modifier(raw);
        raw->mSelf = modifier;
        modifier->setState(LogicElement::StateRunning);
        manager().registerModifier(modifier);
    }
    EXPECT_EQ(7, runAll(10));
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(0u, manager().getProcessList()->size());
    EXPECT_EQ(0u, manager().getElementCount());

    // However often registered, a modifier runs once a pass while switched on.
    SharedPtr<CountingModifier> modifier(new CountingModifier());
    manager().registerModifier(modifier);
    manager().registerModifier(modifier);
    ASSERT_EQ(1u, manager().getProcessList()->size());
    EXPECT_EQ(1u, manager().getElementCount());
    runAll(1000);
    EXPECT_EQ(0, modifier->mRuns);
    modifier->setState(LogicElement::StateReady);
    runAll(2000);
    EXPECT_EQ(1, modifier->mRuns);
    EXPECT_EQ(2000, modifier->mLastTimestamp);
    modifier->setState(LogicElement::StateDisabled);
    runAll(3000);
    EXPECT_EQ(1, modifier->mRuns);

    // Registration keeps a modifier alive until shutdown; one held elsewhere ends quietly later.
    bool ended = false;
    manager().registerModifier(SharedPtr<Modifier>(new CountingModifier(&ended)));
    EXPECT_FALSE(ended);
    core.shutdown();
    EXPECT_TRUE(ended);
    EXPECT_EQ(1, modifier.getRefCount());
}

const float HalfPi = 1.5707963f;

void expectTranslation(Transformation const& t, float x, float y, float z) {
    expectPoint(Point(t.getLocalTransformation() * Point()), x, y, z);
}

using VelocityModifierTest = VelunTest::EngineTest;

TEST_F(VelocityModifierTest, MovesBySpeedTimesTheRunningTimeAlongTheChosenAxesWithoutCatchingUpPauses) {
    Transformation t;  // turned: by default it moves along its parent's axes, not its own
    t.rotateZ(HalfPi, false);
    VelocityModifier modifier(t);
    modifier.setTranslateX(1.0f);
    modifier.setTranslateY(2.0f);
    modifier.setTranslateZ(-4.0f);
    modifier.run(1000);
    modifier.run(2000);
    modifier.setState(LogicElement::StateReady);
    modifier.run(3000);
    modifier.run(4000);
    expectTranslation(t, 0, 0, 0);

    // Ready kept the time: only the last frame counts.
    modifier.setState(LogicElement::StateRunning);
    modifier.run(4250);
    expectTranslation(t, 0.25f, 0.5f, -1);
    modifier.run(4750);
    expectTranslation(t, 0.75f, 1.5f, -3);

    // After a stop the first run only takes the time again.
    modifier.setState(LogicElement::StateDisabled);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(9000);
    expectTranslation(t, 0.75f, 1.5f, -3);
    modifier.run(9250);
    expectTranslation(t, 1, 2, -4);

    // Switched to its own axes, or rotating, which spins in place.
    Transformation ownAxes, spun;
    ownAxes.rotateZ(HalfPi, false);
    spun.translate(5.0f, 0.0f, 0.0f, false);
    VelocityModifier alongOwn(ownAxes), spinning(spun);
    alongOwn.setTransformGlobal(true);
    alongOwn.setTranslateX(1.0f);
    spinning.setRotateY(HalfPi);
    for (VelocityModifier* m : {&alongOwn, &spinning}) {
        m->setState(LogicElement::StateRunning);
        m->run(1000);
        m->run(2000);
    }
    expectTranslation(ownAxes, 0, 1, 0);
    expectTranslation(spun, 5, 0, 0);
    // Local +Z now points along +X.
    EXPECT_NEAR(1.0f, spun.getLocalTransformation()(0, 2), 1e-5f);
    EXPECT_NEAR(0.0f, spun.getLocalTransformation()(2, 2), 1e-5f);
}

class NodeModifierTest : public VelunTest::EngineTest {
protected:
    NodeModifierTest() { chain({core.getSceneManager().createSceneGraph().getRoot(), &place, &source}); }
    // Puts the source, lets the update pass place it, and starts the modifier after it.
    void follow(float x, float z, float angleY) {
        place.rotateY(angleY, false);
        place.translate(x, 0.0f, z, false);
        core.getSceneManager().getSceneGraph(0)->getUpdateTraverser()->run(0);
        modifier.setSource(source);
        modifier.setFollowerTransformation(mFollower);
        modifier.setState(LogicElement::StateRunning);
        modifier.run(1000);
    }

    SceneTest::StartedEngine started;
    Transformation mFollower;
    TransformationNode place;
    Light source;
    FollowModifier modifier;
};

TEST_F(NodeModifierTest, ClosesOnTheSourceAtTenPerSecondWithoutOvershootAndAVelocityMarksItsNodeEveryFrame) {
    follow(10.0f, -4.0f, 0.0f);
    expectPoint(modifier.getPosition(), 0, 0, 0);
    modifier.run(1050);
    expectPoint(modifier.getPosition(), 5, 0, -2);
    expectTranslation(mFollower, 5, 0, -2);
    modifier.run(1075);
    expectPoint(modifier.getPosition(), 6.25f, 0, -2.5f);
    modifier.run(1575);
    expectPoint(modifier.getPosition(), 10, 0, -4);

    // A velocity modifier marks its node in every frame, even at zero speed.
    core.getSceneManager().getSceneGraph(0)->getUpdateTraverser()->run(0);
    ASSERT_EQ(Node::StatusUpdated, place.getNodeStatus());
    VelocityModifier velocity(place);
    velocity.setState(LogicElement::StateRunning);
    velocity.run(1000);
    EXPECT_EQ(Node::StatusUpdated, place.getNodeStatus());
    velocity.run(1016);
    EXPECT_EQ(Node::StatusModified, place.getNodeStatus());
}

TEST_F(NodeModifierTest, FacesTheSourceDirectionWithTheOffsetInTheSourceFrame) {
    modifier.getOffsetTransformation().translate(0.0f, 1.0f, -3.0f, false);
    modifier.setToPoint(Point(4.0f, 0.0f, 0.0f), 0.0f);
    follow(4.0f, 0.0f, -HalfPi);
    modifier.run(1020);
    EXPECT_NEAR(3.0f * HalfPi, modifier.getRotationY(), 1e-4f);
    // The follower's +Z axis points where the source's does, world -X; it stands three
    // units behind the source along that heading, one above.
    EXPECT_NEAR(-1.0f, mFollower.getLocalTransformation()(0, 2), 1e-5f);
    EXPECT_NEAR(0.0f, mFollower.getLocalTransformation()(2, 2), 1e-5f);
    expectTranslation(mFollower, 7, 1, 0);
}

TEST_F(NodeModifierTest, SetToSourceTakesTheHeadingAndKeepsThePosition) {
    testing::internal::CaptureStderr();
    modifier.setToSource();
    EXPECT_EQ("FollowModifier::setToSource: no source node is set\n", testing::internal::GetCapturedStderr());
    EXPECT_FLOAT_EQ(0.0f, modifier.getRotationY());

    modifier.setToPoint(Point(1.0f, 2.0f, 3.0f), 0.5f);
    follow(3.0f, 0.0f, HalfPi);
    modifier.setToSource();
    EXPECT_NEAR(HalfPi, modifier.getRotationY(), 1e-5f);
    expectPoint(modifier.getPosition(), 1, 2, 3);
}

}  // namespace
