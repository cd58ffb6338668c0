#include <gtest/gtest.h>

#include "core/PluginManager.h"
#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "input/InputManager.h"
#include "input/InputProvider.h"

using namespace Velun;

namespace {

class PluginManagerTest : public testing::Test {
protected:
    void SetUp() override { core.startup(); }
    void TearDown() override { core.shutdown(); }
    VelunCore& core = VelunCore::getSingleton();
};

}  // namespace

TEST_F(PluginManagerTest, SetupLoadsTheBackEnds) {
    EXPECT_EQ(0u, core.getPluginManager().getPluginCount());
    EXPECT_TRUE(core.setup(true));
    EXPECT_GE(core.getPluginManager().getPluginCount(), 1u);
    EXPECT_EQ(1u, core.getInputManager().getInputProviderCount());
    EXPECT_EQ(101, core.getInputManager().getInputProviderAt(0)->getProviderId());
    EXPECT_NE(0, core.getTimerManager().getTimestamp());
}

TEST_F(PluginManagerTest, TheDirectoryArgumentReadsNothing) {
    PluginManager& plugins = core.getPluginManager();
    plugins.loadPlugins("/no/such/plugins/directory");
    unsigned int count = plugins.getPluginCount();
    EXPECT_GE(count, 1u);
    EXPECT_EQ(1u, core.getInputManager().getInputProviderCount());
    plugins.unloadPlugins();
    plugins.loadPlugins("");
    EXPECT_EQ(count, plugins.getPluginCount());
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

TEST_F(PluginManagerTest, ASecondLoadAddsASecondSet) {
    PluginManager& plugins = core.getPluginManager();
    plugins.loadPlugins("plugins");
    unsigned int count = plugins.getPluginCount();
    plugins.loadPlugins("plugins");
    EXPECT_EQ(2 * count, plugins.getPluginCount());
    EXPECT_EQ(2u, core.getInputManager().getInputProviderCount());
}

TEST(PluginManagerLifecycleTest, RepeatedStartupSetupShutdownLeavesNothingBehind) {
    VelunCore& core = VelunCore::getSingleton();
    for (int round = 0; round < 3; ++round) {
        core.startup();
        core.setup(false);
        EXPECT_EQ(1u, core.getInputManager().getInputProviderCount());
        EXPECT_NE(0, core.getTimerManager().getTimestamp());
        core.shutdown();
        EXPECT_FALSE(core.isStarted());
    }
}
