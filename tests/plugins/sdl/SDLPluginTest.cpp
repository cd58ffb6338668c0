#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

#include "core/PluginManager.h"
#include "core/ProcessManager.h"
#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "input/InputEvent.h"
#include "input/InputManager.h"
#include "input/InputProcessor.h"
#include "input/InputProvider.h"
#include "plugins/sdl/SDLPlugin.h"
#include "support/PassRecorder.h"

using namespace Velun;

namespace {

class SDLPluginTest : public testing::Test {
protected:
    void SetUp() override { core.startup(); }
    void TearDown() override {
        core.shutdown();
        if (SDL_WasInit(SDL_INIT_VIDEO))
            SDL_QuitSubSystem(SDL_INIT_VIDEO);
        if (SDL_WasInit(SDL_INIT_EVERYTHING) == 0)
            SDL_Quit();
    }
    VelunCore& core = VelunCore::getSingleton();
};

// Stops the main loop when the window system asks the application to end.
class QuitProcessor : public InputProcessor {
public:
    bool processEvent(InputEvent& event) override {
        SysWMEventInfo* info = event.getSysWMEventInfo();
        if (!info || info->getEventType() != SysWMEventInfo::SysWMQuit)
            return false;
        ++mQuits;
        VelunCore::getSingleton().getProcessManager().stop(false);
        return true;
    }
    int mQuits = 0;
};

}  // namespace

TEST_F(SDLPluginTest, RegistersAnInputProviderAndTheTimer) {
    SDLPlugin plugin;
    EXPECT_EQ(0, plugin.registerPlugin());
    EXPECT_EQ(1u, core.getInputManager().getInputProviderCount());
    EXPECT_EQ(101, core.getInputManager().getInputProviderAt(0)->getProviderId());
    EXPECT_EQ(1u, core.getTimerManager().getTimerPluginCount());
    EXPECT_NE(0, core.getTimerManager().getTimestamp());
    EXPECT_NE(0u, SDL_WasInit(SDL_INIT_TIMER));

    EXPECT_EQ(0, plugin.registerPlugin());  // already registered: nothing more
    EXPECT_EQ(1u, core.getInputManager().getInputProviderCount());

    EXPECT_EQ(0, plugin.unregisterPlugin());
    EXPECT_EQ(0u, core.getInputManager().getInputProviderCount());
    EXPECT_EQ(0u, core.getTimerManager().getTimerPluginCount());
    EXPECT_EQ(0, core.getTimerManager().getTimestamp());
    EXPECT_EQ(0u, SDL_WasInit(SDL_INIT_EVERYTHING));
    EXPECT_EQ(0, plugin.unregisterPlugin());
}

TEST_F(SDLPluginTest, AQuitFromTheWindowSystemEndsTheMainLoopAfterThePass) {
    if (!std::getenv("DISPLAY"))
        GTEST_SKIP() << "SDL's event queue needs an X display (run under xvfb-run)";
    core.setup(true);
    // The render window starts SDL's video in an application; here the test does.
    ASSERT_EQ(0, SDL_InitSubSystem(SDL_INIT_VIDEO)) << SDL_GetError();
    SDL_Event pending;
    while (SDL_PollEvent(&pending)) {
    }

    QuitProcessor quitter;
    core.getInputManager().registerInputProcessor(quitter);
    VelunTest::PassRecorder passes;

    SDL_Event quit;
    quit.type = SDL_QUIT;
    ASSERT_EQ(0, SDL_PushEvent(&quit));
    EXPECT_EQ(0, core.getProcessManager().run(true));
    EXPECT_EQ(1, quitter.mQuits);
    EXPECT_EQ(1u, passes.getPasses());
}
