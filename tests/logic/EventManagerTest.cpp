#include "logic/EventManager.h"

#include <gtest/gtest.h>

#include "support/Engine.h"

#include "core/ProcessManager.h"
#include "core/VelunCore.h"

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

TEST_F(EventManagerTest, MainLoopRunsModifiersWithTheEventSubsystem) {
    SharedPtr<CountingModifier> modifier(new CountingModifier());
    modifier->setState(LogicElement::StateRunning);
    manager().registerModifier(modifier);
    VelunCore::getSingleton().getProcessManager().updateSubsystem(2, true);
    EXPECT_EQ(1, modifier->mRuns);
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
