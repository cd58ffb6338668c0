#include <gtest/gtest.h>

#include "core/ConfigManager.h"
#include "core/LogManager.h"
#include "core/NameMapper.h"
#include "core/PluginManager.h"
#include "core/ProcessManager.h"
#include "core/ResourceManager.h"
#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "geometry/GeometryManager.h"
#include "geometry/ObjectManager.h"
#include "input/InputManager.h"
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

TEST_F(VelunCoreTest, SecondStartupChangesNothing) {
    core.startup();
    LogManager* logs = &core.getLogManager();
    ResourceManager* resources = &core.getResourceManager();
    core.startup();
    EXPECT_EQ(logs, &core.getLogManager());
    EXPECT_EQ(resources, &core.getResourceManager());
    EXPECT_EQ(5u, core.getProcessManager().getSubsystemCount());
    EXPECT_EQ(-1, core.getProcessManager().getSubsystemPos(4));
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
