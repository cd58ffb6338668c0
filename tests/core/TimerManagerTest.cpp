#include <gtest/gtest.h>

#include <ctime>

#include "core/ProcessManager.h"
#include "core/TimerManager.h"
#include "core/TimerPlugin.h"
#include "core/VelunCore.h"
#include "support/PassRecorder.h"

using namespace Velun;

namespace {

// A timer plug-in with a fixed time and chosen services.
class FixedTimer : public TimerPlugin {
public:
    FixedTimer(std::int64_t time, bool timestamps, bool counters, bool timers, bool initializes = true)
        : mTime(time), mTimestamps(timestamps), mCounters(counters), mTimers(timers),
          mInitializes(initializes) {}

    bool isInitialized() override { return mInitialized; }
    bool initialize() override {
        ++mInitializeCalls;
        mInitialized = mInitializes;
        return mInitializes;
    }
    bool shutdown() override { return true; }
    bool hasTimestamp() override { return mTimestamps; }
    bool hasHighresCounter() override { return mCounters; }
    bool hasTimer() override { return mTimers; }
    std::int64_t getTimestampResolution() override { return 1; }
    std::int64_t getTimerResolution() override { return 1; }
    double getHighresCounterResolution() override { return 1.0; }
    std::int64_t getTimestamp() override { return mTime; }
    Dorvan::SharedPtr<Timer> createTimer() override { return Dorvan::SharedPtr<Timer>(new MadeTimer(mTime)); }
    Dorvan::SharedPtr<Counter> createHighresCounter() override {
        return Dorvan::SharedPtr<Counter>(new MadeCounter(mTime));
    }

    // Products that tell which plug-in made them.
    struct MadeTimer : Timer {
        explicit MadeTimer(std::int64_t maker) : mMaker(maker) {}
        std::int64_t mMaker;
    };
    struct MadeCounter : Counter {
        explicit MadeCounter(std::int64_t maker) : mMaker(maker) {}
        void start() override {}
        void update() override {}
        void stop() override {}
        double getElapsedSeconds() override { return 0.0; }
        std::int64_t mMaker;
    };

    std::int64_t mTime;
    bool mTimestamps, mCounters, mTimers, mInitializes;
    bool mInitialized = false;
    int mInitializeCalls = 0;
};

std::int64_t madeBy(const Dorvan::SharedPtr<Timer>& timer) {
    return static_cast<FixedTimer::MadeTimer*>(timer.get())->mMaker;
}

std::int64_t madeBy(const Dorvan::SharedPtr<Counter>& counter) {
    return static_cast<FixedTimer::MadeCounter*>(counter.get())->mMaker;
}

}  // namespace

TEST(TimerManagerTest, EachServiceComesFromTheFirstPluginOfferingIt) {
    TimerManager timers;
    FixedTimer countersOnly(1, false, true, false);
    FixedTimer stamps(2, true, false, false);
    FixedTimer everything(3, true, true, true);
    timers.registerTimerPlugin(countersOnly);
    timers.registerTimerPlugin(stamps);
    timers.registerTimerPlugin(everything);

    EXPECT_EQ(2, timers.getTimestamp());
    EXPECT_EQ(1, madeBy(timers.createHighresCounter()));
    EXPECT_EQ(3, madeBy(timers.createTimer()));
    EXPECT_EQ(3u, timers.getTimerPluginCount());
}

TEST(TimerManagerTest, APluginThatFailsToInitialiseOffersNothing) {
    TimerManager timers;
    FixedTimer broken(5, true, true, true, false);
    timers.registerTimerPlugin(broken);
    EXPECT_EQ(1, broken.mInitializeCalls);
    EXPECT_EQ(0u, timers.getTimerPluginCount());
    EXPECT_EQ(0, timers.getTimestamp());
    EXPECT_FALSE(timers.createTimer());
    EXPECT_FALSE(timers.createHighresCounter());
}

TEST(TimerManagerTest, UnregisteringHandsTheServiceToTheNextPlugin) {
    TimerManager timers;
    FixedTimer first(1, true, true, false), second(2, true, true, false);
    timers.registerTimerPlugin(first);
    timers.registerTimerPlugin(second);
    timers.unregisterTimerPlugin(first);
    EXPECT_EQ(2, timers.getTimestamp());
    EXPECT_EQ(2, madeBy(timers.createHighresCounter()));
    timers.unregisterTimerPlugin(first);  // not registered: nothing changes
    EXPECT_EQ(1u, timers.getTimerPluginCount());
    timers.unregisterTimerPlugin(second);
    EXPECT_EQ(0, timers.getTimestamp());
    EXPECT_FALSE(timers.createHighresCounter());
}

TEST(TimerManagerEngineTest, AfterSetupProcessesGetWallClockMilliseconds) {
    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    EXPECT_EQ(0, core.getTimerManager().getTimestamp());
    core.setup(true);

    VelunTest::PassRecorder recorder(3);
    std::int64_t before = static_cast<std::int64_t>(std::time(nullptr)) * 1000;
    core.getProcessManager().run(true);
    std::int64_t after = static_cast<std::int64_t>(std::time(nullptr)) * 1000;

    ASSERT_EQ(3u, recorder.mTimestamps.size());
    // The engine clock is read to the second when it starts, so it may lie up to a
    // second behind the wall clock.
    EXPECT_GE(recorder.mTimestamps.front(), before - 1000);
    EXPECT_LE(recorder.mTimestamps.back(), after + 1000);
    EXPECT_LE(recorder.mTimestamps[0], recorder.mTimestamps[1]);
    EXPECT_LE(recorder.mTimestamps[1], recorder.mTimestamps[2]);
    EXPECT_TRUE(core.getTimerManager().createHighresCounter());
    EXPECT_FALSE(core.getTimerManager().createTimer());
    core.shutdown();
}
