#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "core/FileNameMapper.h"
#include "core/MonotonicCounter.h"
#include "core/NativePath.h"
#include "core/PluginManager.h"
#include "core/ProcessManager.h"
#include "core/ResourceContainer.h"
#include "core/ResourceData.h"
#include "core/ResourceManager.h"
#include "core/TimerManager.h"
#include "core/TimerPlugin.h"
#include "core/VelunCore.h"
#include "geometry/GeometryManager.h"
#include "geometry/ObjectManager.h"
#include "input/InputManager.h"
#include "input/InputProvider.h"
#include "logic/EventManager.h"
#include "render/RenderManager.h"
#include "scene/SceneManager.h"
#include "sound/SoundManager.h"
#include "texture/TextureManager.h"

using namespace Velun;

namespace {

// Each test leaves the engine shut down, whatever it did.
class VelunCoreTest : public testing::Test {
protected:
    void TearDown() override { VelunCore::getSingleton().shutdown(); }
    VelunCore& core = VelunCore::getSingleton();
};

TEST_F(VelunCoreTest, StartupRegistersTheSubsystemsInUpdateOrderAndSetupMapsAndLoads) {
    core.startup();
    ProcessManager& processes = core.getProcessManager();
    const std::pair<Subsystem*, int> order[] = {
        {&core.getInputManager(), 1},  {&core.getEventManager(), 2},
        {&core.getSceneManager(), 3},  {&core.getResourceManager().getSoundManager(), 5},
        {&core.getRenderManager(), 6},
    };
    ASSERT_EQ(5u, processes.getSubsystemCount());
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(order[i].first, processes.getSubsystemByPos(i)) << i;
        EXPECT_EQ(order[i].second, processes.getSubsystemByPos(i)->getSubsystemId()) << i;
    }

    // Setup maps resource names below the working directory and loads the back ends.
    ResourceManager& resources = core.getResourceManager();
    EXPECT_TRUE(core.setup(true));
    Dorvan::SharedPtr<NameMapper> models = resources.getGeometryManager().getGeometryNameMapper();
    EXPECT_EQ(models.get(), resources.getObjectManager().getObjectNameMapper().get());
    EXPECT_EQ(".\\models\\tree\\oak.ms3d", models->getResourceInfo("tree/oak.ms3d").mFileName);
    EXPECT_EQ(
        ".\\textures\\grass.png",
        resources.getTextureManager().getTextureSourceNameMapper()->getResourceInfo("grass.png").mFileName);
    EXPECT_EQ(".\\sound\\boom.wav",
              resources.getSoundManager().getSoundNameMapper()->getResourceInfo("boom.wav").mFileName);
    EXPECT_EQ(1u, core.getInputManager().getInputProviderCount());
    EXPECT_EQ(101, core.getInputManager().getInputProviderAt(0)->getProviderId());
    EXPECT_NE(0, core.getTimerManager().getTimestamp());

    // Unloading takes the back ends out of the managers.
    core.getPluginManager().unloadPlugins();
    EXPECT_EQ(0u, core.getPluginManager().getPluginCount());
    EXPECT_EQ(0u, core.getInputManager().getInputProviderCount());
    EXPECT_TRUE(core.getInputManager().getProcessList()->empty());
    EXPECT_EQ(0, core.getTimerManager().getTimestamp());

    core.shutdown();
    EXPECT_EQ(nullptr, core.findResourceManager());
}

using VelunCoreDeathTest = VelunCoreTest;

TEST_F(VelunCoreDeathTest, GettersBeforeStartupAndASecondInstanceAreCallingOrderErrors) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(core.getPluginManager(), "mPluginManager");
    EXPECT_DEATH(core.getSceneManager(), "mSceneManager");
    EXPECT_DEATH(core.getLogManager(), "mLogManager");
    core.startup();
    // The library's instance lives; a second one, made outside the library, must assert.
    EXPECT_DEATH(Dorvan::Singleton<VelunCore>::getSingleton(), "!VelunCore::mSingleton");
}

// A timer plug-in with a fixed time and chosen services; each hands out its own products.
class FixedTimer : public TimerPlugin {
public:
    FixedTimer(std::int64_t time, bool timestamps, bool counters, bool timers, bool initializes = true)
        : mTime(time), mTimestamps(timestamps), mCounters(counters), mTimers(timers),
          mInitializes(initializes) {}

    bool isInitialized() override { return mInitialized; }
    bool initialize() override {
        ++mInitializeCalls;
        return mInitialized = mInitializes;
    }
    bool shutdown() override { return true; }
    bool hasTimestamp() override { return mTimestamps; }
    bool hasHighresCounter() override { return mCounters; }
    bool hasTimer() override { return mTimers; }
    std::int64_t getTimestampResolution() override { return 1; }
    std::int64_t getTimerResolution() override { return 1; }
    double getHighresCounterResolution() override { return 1.0; }
    std::int64_t getTimestamp() override { return mTime; }
    Dorvan::SharedPtr<Timer> createTimer() override { return mTimer; }
    Dorvan::SharedPtr<Counter> createHighresCounter() override { return mCounter; }

    std::int64_t mTime;
    bool mTimestamps, mCounters, mTimers, mInitializes;
    bool mInitialized = false;
    int mInitializeCalls = 0;
    Dorvan::SharedPtr<Timer> mTimer{new Timer()};
    Dorvan::SharedPtr<Counter> mCounter{new MonotonicCounter()};
};

TEST(TimerManagerTest, EachServiceComesFromTheFirstInitialisedPluginOfferingIt) {
    TimerManager timers;
    FixedTimer broken(5, true, true, true, false);
    timers.registerTimerPlugin(broken);
    EXPECT_EQ(1, broken.mInitializeCalls);
    EXPECT_EQ(0u, timers.getTimerPluginCount());
    EXPECT_EQ(0, timers.getTimestamp());
    EXPECT_FALSE(timers.createTimer());
    EXPECT_FALSE(timers.createHighresCounter());

    FixedTimer countersOnly(1, false, true, false), stamps(2, true, false, false),
        everything(3, true, true, true);
    for (FixedTimer* plugin : {&countersOnly, &stamps, &everything})
        timers.registerTimerPlugin(*plugin);
    EXPECT_EQ(2, timers.getTimestamp());
    EXPECT_EQ(countersOnly.mCounter.get(), timers.createHighresCounter().get());
    EXPECT_EQ(everything.mTimer.get(), timers.createTimer().get());
    EXPECT_EQ(3u, timers.getTimerPluginCount());
}

TEST(MonotonicCounterTest, ElapsedIsTheTimeBetweenTheLastTwoReadings) {
    MonotonicCounter counter;
    counter.start();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    counter.update();
    double waited = counter.getElapsedSeconds();
    // A sleep lasts at least as long as asked; the upper bound only rules out a wrong unit.
    EXPECT_GE(waited, 0.020);
    EXPECT_LT(waited, 10.0);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    counter.stop();
    EXPECT_GE(counter.getElapsedSeconds(), 0.005);
}

TEST(FileNameMapperTest, ComposesBackslashPathsFindsTheExtensionAndGivesTheNativePath) {
    struct Mapping {
        const char *name, *fileName, *fileType;
    };
    const Mapping table[] = {
        {"boom.wav", ".\\sound\\boom.wav", "wav"}, {"a/b", ".\\sound\\a\\b", ""},
        {"a.b/c", ".\\sound\\a.b\\c", ""},         {"x.tar.gz", ".\\sound\\x.tar.gz", "gz"},
        {"ends.", ".\\sound\\ends.", ""},          {"", ".\\sound\\", ""},
    };
    FileNameMapper mapper(".\\sound");
    for (const Mapping& m : table) {
        SCOPED_TRACE(m.name);
        NameMapper::ResourceInfo info = mapper.getResourceInfo(m.name);
        EXPECT_EQ(m.name, info.getName());
        EXPECT_EQ(m.fileName, info.getFileName());
        EXPECT_EQ(m.fileType, info.getFileType());
    }
    // The name a loader opens; paths written inside model files take the same way.
    EXPECT_EQ("./sound/a/b", toNativePath(mapper.getResourceInfo("a/b").mFileName));
    EXPECT_EQ("/abs/already/native", toNativePath("/abs/already/native"));
}

// Provider data that writes its releases (and whether it was still hooked then) and its
// end into a log. Kept data is freed by its provider; the rest ends in the default hook,
// as a render context's id sets do.
class LoggedData : public ResourceData {
public:
    LoggedData(unsigned int providerId, std::string* log, bool kept = false)
        : ResourceData(providerId), mLog(log), mKept(kept) {}
    ~LoggedData() override { *mLog += "end" + std::to_string(getProviderId()) + " "; }
    void resourceReleased(ResourceContainer& resource) override {
        *mLog += (getResourceContainer() ? "hooked" : "released") + std::to_string(getProviderId()) + " ";
        if (!mKept)
            ResourceData::resourceReleased(resource);
    }
    std::string* mLog;
    bool mKept;
};

TEST(ResourceContainerTest, DataIsReleasedOnceUnhooksItselfWhenEndingFirstAndIsNeverCopied) {
    std::string log;
    {
        ResourceContainer container;
        container.setResourceData(*new LoggedData(0, &log));
        container.setResourceData(*new LoggedData(5, &log));
        LoggedData* early = new LoggedData(1, &log);
        container.setResourceData(*early);
        delete early;
        EXPECT_EQ(nullptr, container.getResourceData(1));
        EXPECT_EQ(2u, container.getResourceDataCount());
        EXPECT_EQ("end1 ", log);
        log.clear();
    }
    EXPECT_EQ("released0 end0 released5 end5 ", log);

    // Replaced data and copies leave the other data alone.
    log.clear();
    ResourceContainer source;
    LoggedData oldData(2, &log, true), newData(2, &log, true), sourceData(0, &log, true),
        targetData(0, &log, true);
    source.setResourceData(oldData);
    source.setResourceData(newData);
    EXPECT_EQ(&newData, source.getResourceData(2));
    EXPECT_EQ(1u, source.getResourceDataCount());
    EXPECT_EQ(nullptr, oldData.getResourceContainer());
    source.setResourceData(sourceData);

    ResourceContainer copy(source);
    EXPECT_EQ(0u, copy.getResourceDataCount());
    copy.setResourceData(targetData);
    copy = source;
    EXPECT_EQ(nullptr, copy.getResourceData(0));
    EXPECT_EQ(&sourceData, source.getResourceData(0));
    EXPECT_EQ("released0 ", log);
    source.unsetResourceData(0);
    source.unsetResourceData(2);
}

}  // namespace
