#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <thread>

#include "core/ConfigManager.h"
#include "core/FileNameMapper.h"
#include "core/LogManager.h"
#include "core/MonotonicCounter.h"
#include "core/NameMapper.h"
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
#include "support/Engine.h"
#include "support/PassRecorder.h"
#include "texture/TextureManager.h"

using namespace Velun;
using PluginManagerTest = VelunTest::EngineTest;

namespace {

// Each test leaves the engine shut down, whatever it did.
class VelunCoreTest : public testing::Test {
protected:
    void TearDown() override { VelunCore::getSingleton().shutdown(); }
    VelunCore& core = VelunCore::getSingleton();
};

}  // namespace

TEST_F(VelunCoreTest, StartupRegistersTheSubsystemsInUpdateOrder) {
    EXPECT_FALSE(core.isStarted());
    core.startup();
    EXPECT_TRUE(core.isStarted());

    ProcessManager& processes = core.getProcessManager();
    ASSERT_EQ(5u, processes.getSubsystemCount());
    EXPECT_EQ(&core.getInputManager(), processes.getSubsystemByPos(0));
    EXPECT_EQ(&core.getEventManager(), processes.getSubsystemByPos(1));
    EXPECT_EQ(&core.getSceneManager(), processes.getSubsystemByPos(2));
    EXPECT_EQ(&core.getResourceManager().getSoundManager(), processes.getSubsystemByPos(3));
    EXPECT_EQ(&core.getRenderManager(), processes.getSubsystemByPos(4));
    EXPECT_EQ(1, processes.getSubsystemByPos(0)->getSubsystemId());
    EXPECT_EQ(2, processes.getSubsystemByPos(1)->getSubsystemId());
    EXPECT_EQ(3, processes.getSubsystemByPos(2)->getSubsystemId());
    EXPECT_EQ(5, processes.getSubsystemByPos(3)->getSubsystemId());
    EXPECT_EQ(6, processes.getSubsystemByPos(4)->getSubsystemId());

    core.shutdown();
    EXPECT_FALSE(core.isStarted());
    EXPECT_EQ(nullptr, core.findResourceManager());
}

TEST_F(VelunCoreTest, SetupMapsResourceNamesBelowTheWorkingDirectory) {
    core.startup();
    ResourceManager& resources = core.getResourceManager();
    EXPECT_TRUE(resources.getObjectManager().getObjectNameMapper().isNull());
    core.setup(true);

    Dorvan::SharedPtr<NameMapper> models = resources.getGeometryManager().getGeometryNameMapper();
    ASSERT_FALSE(models.isNull());
    EXPECT_EQ(models.get(), resources.getObjectManager().getObjectNameMapper().get());
    EXPECT_EQ(".\\models\\tree\\oak.ms3d", models->getResourceInfo("tree/oak.ms3d").mFileName);
    EXPECT_EQ(
        ".\\textures\\grass.png",
        resources.getTextureManager().getTextureSourceNameMapper()->getResourceInfo("grass.png").mFileName);
    EXPECT_EQ(".\\sound\\boom.wav",
              resources.getSoundManager().getSoundNameMapper()->getResourceInfo("boom.wav").mFileName);
}

// Run under the sanitizer build, this shows that a full cycle leaves nothing behind.
TEST_F(VelunCoreTest, RepeatedCyclesStartAfresh) {
    for (int i = 0; i < 50; ++i) {
        core.startup();
        core.setup(true);
        ASSERT_EQ(5u, core.getProcessManager().getSubsystemCount());
        core.getProcessManager().update(true);
        core.shutdown();
        ASSERT_FALSE(core.isStarted());
    }
}

using VelunCoreDeathTest = VelunCoreTest;

TEST_F(VelunCoreDeathTest, GettersAssertTheirMemberBeforeStartup) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(core.getPluginManager(), "mPluginManager");
    EXPECT_DEATH(core.getResourceManager(), "mResourceManager");
    EXPECT_DEATH(core.getRenderManager(), "mRenderManager");
    EXPECT_DEATH(core.getConfigManager(), "mConfigManager");
    EXPECT_DEATH(core.getInputManager(), "mInputManager");
    EXPECT_DEATH(core.getProcessManager(), "mProcessManager");
    EXPECT_DEATH(core.getSceneManager(), "mSceneManager");
    EXPECT_DEATH(core.getTimerManager(), "mTimerManager");
    EXPECT_DEATH(core.getLogManager(), "mLogManager");
    EXPECT_DEATH(core.getEventManager(), "mEventManager");
}

TEST_F(VelunCoreDeathTest, ASecondInstanceIsACallingOrderError) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    core.startup();
    // The library's instance lives; a second one, made outside the library, must assert.
    EXPECT_DEATH(Dorvan::Singleton<VelunCore>::getSingleton(), "!VelunCore::mSingleton");
}

TEST_F(PluginManagerTest, SetupLoadsTheBackEnds) {
    EXPECT_EQ(0u, core.getPluginManager().getPluginCount());
    EXPECT_TRUE(core.setup(true));
    EXPECT_GE(core.getPluginManager().getPluginCount(), 1u);
    EXPECT_EQ(1u, core.getInputManager().getInputProviderCount());
    EXPECT_EQ(101, core.getInputManager().getInputProviderAt(0)->getProviderId());
    EXPECT_NE(0, core.getTimerManager().getTimestamp());
}

TEST_F(PluginManagerTest, UnloadingTakesTheBackEndsOutOfTheManagers) {
    PluginManager& plugins = core.getPluginManager();
    plugins.loadPlugins("plugins");
    plugins.unloadPlugins();
    EXPECT_EQ(0u, plugins.getPluginCount());
    EXPECT_EQ(0u, core.getInputManager().getInputProviderCount());
    EXPECT_TRUE(core.getInputManager().getProcessList()->empty());
    EXPECT_EQ(0, core.getTimerManager().getTimestamp());
}

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

TEST(MonotonicCounterTest, ElapsedIsTheTimeBetweenTheLastTwoReadings) {
    MonotonicCounter counter;
    EXPECT_EQ(0.0, counter.getElapsedSeconds());
    counter.start();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    counter.update();
    double waited = counter.getElapsedSeconds();
    // A sleep lasts at least as long as asked; the upper bound only rules out
    // a wrong unit.
    EXPECT_GE(waited, 0.020);
    EXPECT_LT(waited, 10.0);

    counter.update();
    EXPECT_GE(counter.getElapsedSeconds(), 0.0);
    EXPECT_LT(counter.getElapsedSeconds(), waited);

    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    counter.stop();
    EXPECT_GE(counter.getElapsedSeconds(), 0.005);
}

namespace {

struct Mapping {
    const char* name;
    const char* fileName;
    const char* fileType;
};

}  // namespace

TEST(FileNameMapperTest, ComposesBackslashPathsAndFindsTheExtension) {
    FileNameMapper mapper(".\\sound");
    const Mapping table[] = {
        {"boom.wav", ".\\sound\\boom.wav", "wav"},
        {"a/b", ".\\sound\\a\\b", ""},
        {"a.b/c", ".\\sound\\a.b\\c", ""},
        {"x.tar.gz", ".\\sound\\x.tar.gz", "gz"},
        {"ends.", ".\\sound\\ends.", ""},
        {"", ".\\sound\\", ""},
        {"Deep/Mixed.Case/File.OGG", ".\\sound\\Deep\\Mixed.Case\\File.OGG", "OGG"},
    };
    for (const Mapping& m : table) {
        NameMapper::ResourceInfo info = mapper.getResourceInfo(m.name);
        EXPECT_EQ(m.name, info.mName);
        EXPECT_EQ(m.fileName, info.mFileName) << m.name;
        EXPECT_EQ(m.fileType, info.mFileType) << m.name;
    }
}

TEST(FileNameMapperTest, ModelNameMapsBelowTheModelsDirectory) {
    FileNameMapper mapper(".\\models");
    NameMapper::ResourceInfo info = mapper.getResourceInfo("tree/oak.ms3d");
    EXPECT_EQ(".\\models\\tree\\oak.ms3d", info.getFileName());
    EXPECT_EQ("ms3d", info.getFileType());
    EXPECT_EQ("tree/oak.ms3d", info.getName());
}

TEST(FileNameMapperTest, NativePathIsWhatALoaderOpens) {
    FileNameMapper mapper(".\\textures");
    NameMapper::ResourceInfo info = mapper.getResourceInfo("terrain/grass.png");
#ifdef _WIN32
    EXPECT_EQ(".\\textures\\terrain\\grass.png", toNativePath(info.mFileName));
#else
    EXPECT_EQ("./textures/terrain/grass.png", toNativePath(info.mFileName));
    // Paths written inside model files take the same way.
    EXPECT_EQ("./jeep1.jpg", toNativePath(".\\jeep1.jpg"));
    EXPECT_EQ("/abs/already/native", toNativePath("/abs/already/native"));
#endif
}

namespace {

// Provider data that counts how it ends, the way a render context's id sets would.
class CountingData : public ResourceData {
public:
    CountingData(unsigned int providerId, int* released, int* destroyed)
        : ResourceData(providerId), mReleased(released), mDestroyed(destroyed) {}
    ~CountingData() override { ++*mDestroyed; }
    void resourceReleased(ResourceContainer& resource) override {
        ++*mReleased;
        ResourceData::resourceReleased(resource);
    }
    int* mReleased;
    int* mDestroyed;
};

// Data that the provider keeps and frees itself.
class KeptData : public ResourceData {
public:
    explicit KeptData(unsigned int providerId) : ResourceData(providerId) {}
    void resourceReleased(ResourceContainer& resource) override {
        ++mReleased;
        mSeenDataCount = resource.getResourceDataCount();
    }
    int mReleased = 0;
    unsigned int mSeenDataCount = 99;
};

}  // namespace

TEST(ResourceContainerTest, ReplacedDataIsNotDeletedAndNoLongerHooked) {
    ResourceContainer container;
    KeptData oldData(2);
    KeptData newData(2);
    container.setResourceData(oldData);
    container.setResourceData(newData);
    EXPECT_EQ(&newData, container.getResourceData(2));
    EXPECT_EQ(1u, container.getResourceDataCount());
    EXPECT_EQ(nullptr, oldData.getResourceContainer());
    EXPECT_EQ(0, oldData.mReleased);
}

TEST(ResourceContainerTest, DestroyedResourceReleasesEveryProvidersData) {
    int released = 0, destroyed = 0;
    CountingData* first = new CountingData(0, &released, &destroyed);
    CountingData* second = new CountingData(5, &released, &destroyed);
    {
        ResourceContainer container;
        container.setResourceData(*first);
        container.setResourceData(*second);
    }
    // Each hook ran once, after the data was unhooked, and the default hook deleted it.
    EXPECT_EQ(2, released);
    EXPECT_EQ(2, destroyed);
}

TEST(ResourceContainerTest, DataDeletedByItsProviderUnhooksItself) {
    ResourceContainer container;
    int released = 0, destroyed = 0;
    CountingData* data = new CountingData(1, &released, &destroyed);
    container.setResourceData(*data);
    delete data;
    EXPECT_EQ(nullptr, container.getResourceData(1));
    EXPECT_EQ(0u, container.getResourceDataCount());
    EXPECT_EQ(0, released);
}

TEST(ResourceContainerTest, CopyStartsWithoutProviderDataAndAssignmentReleasesOwnData) {
    ResourceContainer source;
    KeptData sourceData(0);
    source.setResourceData(sourceData);

    ResourceContainer copy(source);
    EXPECT_EQ(nullptr, copy.getResourceData(0));
    EXPECT_EQ(&sourceData, source.getResourceData(0));

    KeptData targetData(0);
    copy.setResourceData(targetData);
    copy = source;
    EXPECT_EQ(nullptr, copy.getResourceData(0));
    EXPECT_EQ(1, targetData.mReleased);
    EXPECT_EQ(&sourceData, source.getResourceData(0));
    EXPECT_EQ(0, sourceData.mReleased);
    source.unsetResourceData(0);
}
