// Before SDL_syswm.h, whose X11 names clash with the engine's.
#include "support/GLDrawFixture.h"

#include <SDL.h>
#include <SDL_syswm.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <sstream>
#include <utility>

#include "input/InputEvent.h"
#include "input/InputManager.h"
#include "input/InputProcessor.h"
#include "plugins/sdl/SDLInputProvider.h"
#include "plugins/sdl/SDLTimer.h"
#include "support/PassRecorder.h"

using namespace Velun;

namespace {

// Writes each event it sees as one line: "key <type> <code> <symbol> <modifiers>
// <unicode>", "move <axes> <x> <y> <dx> <dy>", "button <type> <number> <x> <y>" or
// "wm <type> <width> <height>", then "@<timestamp> w<window>" and "dev" for a device.
class Recorder : public InputProcessor {
public:
    explicit Recorder(int id) : InputProcessor(id) {}
    bool processEvent(InputEvent& event) override {
        std::ostringstream line;
        if (KeyEventInfo* key = event.getKeyEventInfo())
            line << "key " << key->getEventType() << " " << int(key->getKeycode()) << " "
                 << key->getKeySymbol() << " 0x" << std::hex << key->getModifierMask() << std::dec << " "
                 << key->getUnicode();
        else if (MoveEventInfo* move = event.getMoveEventInfo())
            line << "move " << move->getAxisCount() << " " << move->getX() << " " << move->getY() << " "
                 << move->getRelativeX() << " " << move->getRelativeY();
        else if (ButtonEventInfo* button = event.getButtonEventInfo())
            line << "button " << button->getEventType() << " " << button->getButtonNr() << " "
                 << button->getX() << " " << button->getY();
        else if (SysWMEventInfo* wm = event.getSysWMEventInfo()) {
            line << "wm " << wm->getEventType() << " " << wm->getWidth() << " " << wm->getHeight();
            if (wm->getEventType() == SysWMEventInfo::SysWMQuit)  // as an application would
                VelunCore::getSingleton().getProcessManager().stop(false);
        }
        line << " @" << event.getTimestamp() << " w" << event.getWindowId()
             << (event.getInputDevice() ? " dev" : "");
        mSeen.push_back(line.str());
        return false;
    }
    std::vector<std::string> mSeen;
};

// The engine started, and SDL's video, which the render window starts in an application,
// started by the test. SDL's tests have both to themselves: the drawing tests' window
// closes first.
class SDLPluginTest : public testing::Test {
protected:
    void SetUp() override {
        RenderGLTest::GLDrawTest::stopWindow();
        ASSERT_EQ(0, SDL_InitSubSystem(SDL_INIT_VIDEO)) << SDL_GetError();
        core.startup();
        core.getInputManager().registerInputProcessor(recorder);
        provider.reset(new SDLInputProvider());
        core.getInputManager().registerInputProvider(*provider);
        SDL_Event pending;
        while (SDL_PollEvent(&pending)) {
        }
    }
    void TearDown() override {
        provider.reset();
        core.shutdown();
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        if (SDL_WasInit(SDL_INIT_EVERYTHING) == 0)
            SDL_Quit();
    }

    static void push(SDL_Event event) { ASSERT_EQ(0, SDL_PushEvent(&event)); }
    static SDL_Event make(Uint8 type) {
        SDL_Event event{};
        event.type = type;
        return event;
    }
    // One event of the kind that `field` of SDL_Event holds.
    template <class T>
    static void push(T SDL_Event::*field, T value) {
        SDL_Event event = make(value.type);
        event.*field = value;
        push(event);
    }
    static void key(Uint8 type, Uint8 code, SDLKey symbol, int modifiers, Uint16 unicode = 0) {
        push(&SDL_Event::key,
             SDL_KeyboardEvent{type, 0, type == SDL_KEYDOWN, {code, symbol, SDLMod(modifiers), unicode}});
    }
    // Polls once and gives what arrived since the last call.
    std::vector<std::string> poll(std::int64_t timestamp) {
        provider->pollEvents(timestamp);
        return std::exchange(recorder.mSeen, {});
    }

    VelunCore& core = VelunCore::getSingleton();
    Recorder recorder{1};
    std::unique_ptr<SDLInputProvider> provider;
};

using Lines = std::vector<std::string>;

}  // namespace

TEST_F(SDLPluginTest, AQuitWaitsForAnEnabledProviderAndEndsTheMainLoopAfterThePass) {
    push(make(SDL_QUIT));
    provider->setEnabled(false);  // not polled, the queue kept
    core.getProcessManager().updateSubsystem(1, true);
    EXPECT_TRUE(recorder.mSeen.empty());
    core.getInputManager().unregisterInputProvider(*provider);
    core.setup(true);                   // registers SDL's own input provider
    VelunTest::PassRecorder passes(5);  // a lost quit ends the loop after five passes, not never
    EXPECT_EQ(0, core.getProcessManager().run(true));
    ASSERT_EQ(1u, recorder.mSeen.size());
    EXPECT_EQ(0u, recorder.mSeen[0].find("wm 0 0 0 @")) << recorder.mSeen[0];
    EXPECT_EQ(1u, passes.getPasses());
}

TEST(SDLTimerTest, TimestampIsTheTimeOfDayFollowingTheTickCount) {
    SDLTimer timer;
    timer.initialize();
    std::int64_t const ticks = SDL_GetTicks(), first = timer.getTimestamp();
    EXPECT_NEAR(double(first), double(std::time(nullptr)) * 1000, 2000);
    EXPECT_LE(timer.getTimestamp() - first, 1000) << "a read in the same tick is no wrap-around";
    SDL_Delay(30);
    timer.initialize();  // initialised already: the time goes on undisturbed
    std::int64_t const second = timer.getTimestamp();
    EXPECT_GE(second - first, 30);
    EXPECT_LE(second - first, std::int64_t(SDL_GetTicks()) - ticks);
    timer.shutdown();
}

// Only input focus and activity change activation (the pointer leaving the window does
// not); joystick and window manager events are dropped. Each modifier is in its own set of
// the four keys, so that no two can trade bits.
TEST_F(SDLPluginTest, EveryKindOfEventArrivesInOrderWithThePollTime) {
    key(SDL_KEYDOWN, 38, SDLK_a, KMOD_RCTRL | KMOD_LALT | KMOD_RALT | KMOD_LMETA, 'A');
    push(make(SDL_VIDEOEXPOSE));
    key(SDL_KEYUP, 53, SDLK_x, KMOD_RMETA | KMOD_NUM | KMOD_CAPS | KMOD_MODE);
    key(SDL_KEYDOWN, 23, SDLK_TAB, KMOD_LSHIFT | KMOD_LCTRL | KMOD_LALT | KMOD_LMETA | KMOD_NUM | KMOD_MODE);
    key(SDL_KEYDOWN, 23, SDLK_TAB, KMOD_RSHIFT | KMOD_LCTRL | KMOD_RALT | KMOD_LMETA | KMOD_CAPS | KMOD_MODE);
    push(&SDL_Event::motion, SDL_MouseMotionEvent{SDL_MOUSEMOTION, 0, 0, 320, 200, -4, 7});
    push(&SDL_Event::button,
         SDL_MouseButtonEvent{SDL_MOUSEBUTTONDOWN, 0, SDL_BUTTON_RIGHT, SDL_PRESSED, 17, 99});
    push(&SDL_Event::button, SDL_MouseButtonEvent{SDL_MOUSEBUTTONUP, 0, SDL_BUTTON_WHEELDOWN, 0, 0, 0});
    push(&SDL_Event::active, SDL_ActiveEvent{SDL_ACTIVEEVENT, 1, SDL_APPINPUTFOCUS});
    push(&SDL_Event::active, SDL_ActiveEvent{SDL_ACTIVEEVENT, 0, SDL_APPMOUSEFOCUS});
    push(&SDL_Event::active, SDL_ActiveEvent{SDL_ACTIVEEVENT, 0, SDL_APPACTIVE});
    push(&SDL_Event::active, SDL_ActiveEvent{SDL_ACTIVEEVENT, 0, SDL_APPMOUSEFOCUS | SDL_APPINPUTFOCUS});
    push(&SDL_Event::jaxis, SDL_JoyAxisEvent{SDL_JOYAXISMOTION, 0, 0, 1000});
    push(make(SDL_JOYBUTTONDOWN));
    SDL_SysWMmsg message{};
    SDL_Event windowManager = make(SDL_SYSWMEVENT);
    windowManager.syswm.msg = &message;  // SDL copies the message when queueing
    push(windowManager);
    push(make(SDL_QUIT));
    push(&SDL_Event::resize, SDL_ResizeEvent{SDL_VIDEORESIZE, 640, 480});
    EXPECT_EQ((Lines{"key 0 38 97 0x78 65 @123456789012 w-1", "wm 1 0 0 @123456789012 w-1",
                     "key 1 53 120 0x780 0 @123456789012 w-1", "key 0 23 9 0x555 0 @123456789012 w-1",
                     "key 0 23 9 0x666 0 @123456789012 w-1", "move 2 320 200 -4 7 @123456789012 w-1",
                     "button 0 3 17 99 @123456789012 w-1", "button 1 5 0 0 @123456789012 w-1",
                     "wm 3 0 0 @123456789012 w-1", "wm 4 0 0 @123456789012 w-1", "wm 4 0 0 @123456789012 w-1",
                     "wm 0 0 0 @123456789012 w-1", "wm 2 640 480 @123456789012 w-1"}),
              poll(123456789012LL));
    EXPECT_EQ(Lines{}, poll(5));
}
