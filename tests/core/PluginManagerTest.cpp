#include <gtest/gtest.h>

#include "core/PluginManager.h"
#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "input/InputManager.h"
#include "input/InputProvider.h"
#include "support/Engine.h"

using namespace Velun;

using PluginManagerTest = VelunTest::EngineTest;

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
