#include <gtest/gtest.h>

#include <SDL.h>
#include <SDL_syswm.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "core/ProcessManager.h"
#include "core/VelunCore.h"
#include "input/InputEvent.h"
#include "input/InputManager.h"
#include "input/InputProcessor.h"
#include "plugins/sdl/SDLInputProvider.h"

using namespace Velun;

namespace {

// What a processor saw of one event; the event itself lives only during the call.
struct Seen {
    int type;
    std::int64_t timestamp;
    int windowId;
    InputDevice* device;
    int infoType = -1;
    int keycode = 0, keySymbol = 0, modifiers = 0, unicode = 0;
    int axisCount = 0;
    float x = 0, y = 0, relX = 0, relY = 0;
    int button = 0, buttonX = 0, buttonY = 0;
    int width = -1, height = -1;
};

class Recorder : public InputProcessor {
public:
    explicit Recorder(int id) : InputProcessor(id) {}
    bool processEvent(InputEvent& event) override {
        Seen seen;
        seen.type = event.getEventType();
        seen.timestamp = event.getTimestamp();
        seen.windowId = event.getWindowId();
        seen.device = event.getInputDevice();
        if (KeyEventInfo* key = event.getKeyEventInfo()) {
            seen.infoType = key->getEventType();
            seen.keycode = key->getKeycode();
            seen.keySymbol = key->getKeySymbol();
            seen.modifiers = key->getModifierMask();
            seen.unicode = key->getUnicode();
        } else if (MoveEventInfo* move = event.getMoveEventInfo()) {
            seen.axisCount = move->getAxisCount();
            seen.x = move->getX();
            seen.y = move->getY();
            seen.relX = move->getRelativeX();
            seen.relY = move->getRelativeY();
        } else if (ButtonEventInfo* button = event.getButtonEventInfo()) {
            seen.infoType = button->getEventType();
            seen.button = button->getButtonNr();
            seen.buttonX = button->getX();
            seen.buttonY = button->getY();
        } else if (SysWMEventInfo* wm = event.getSysWMEventInfo()) {
            seen.infoType = wm->getEventType();
            seen.width = wm->getWidth();
            seen.height = wm->getHeight();
        }
        mSeen.push_back(seen);
        ++mCalls;
        return false;
    }
    std::vector<Seen> mSeen;
    int mCalls = 0;
};

// The event queue runs only with SDL's video, which the test starts itself here
// (in the engine the render window does).
class SDLInputProviderTest : public testing::Test {
protected:
    void SetUp() override {
        if (!std::getenv("DISPLAY"))
            GTEST_SKIP() << "SDL's event queue needs an X display (run under xvfb-run)";
        ASSERT_EQ(0, SDL_InitSubSystem(SDL_INIT_VIDEO)) << SDL_GetError();
        core.startup();
        provider = new SDLInputProvider();
        core.getInputManager().registerInputProvider(*provider);
        core.getInputManager().registerInputProcessor(recorder);
        SDL_Event pending;
        while (SDL_PollEvent(&pending)) {
        }
    }
    void TearDown() override {
        delete provider;
        core.shutdown();
        if (SDL_WasInit(SDL_INIT_VIDEO))
            SDL_QuitSubSystem(SDL_INIT_VIDEO);
        if (SDL_WasInit(SDL_INIT_EVERYTHING) == 0)
            SDL_Quit();
    }

    static void push(SDL_Event event) { ASSERT_EQ(0, SDL_PushEvent(&event)); }
    static SDL_Event make(Uint8 type) {
        SDL_Event event;
        std::memset(&event, 0, sizeof event);
        event.type = type;
        return event;
    }
    static SDL_Event key(Uint8 type, SDLKey sym, Uint8 scancode, int mod, Uint16 unicode = 0) {
        SDL_Event event = make(type);
        event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
        event.key.keysym.sym = sym;
        event.key.keysym.scancode = scancode;
        event.key.keysym.mod = static_cast<SDLMod>(mod);
        event.key.keysym.unicode = unicode;
        return event;
    }
    static SDL_Event active(Uint8 gain, Uint8 state) {
        SDL_Event event = make(SDL_ACTIVEEVENT);
        event.active.gain = gain;
        event.active.state = state;
        return event;
    }
    void poll(std::int64_t timestamp) { provider->pollEvents(timestamp); }

    VelunCore& core = VelunCore::getSingleton();
    SDLInputProvider* provider = nullptr;
    Recorder recorder{1};
};

}  // namespace

TEST_F(SDLInputProviderTest, QueuedEventsArriveInOrderWithThePollTime) {
    push(key(SDL_KEYDOWN, SDLK_x, 53, KMOD_NONE, 'x'));
    push(make(SDL_VIDEOEXPOSE));
    push(key(SDL_KEYUP, SDLK_x, 53, KMOD_NONE));
    poll(123456789012LL);
    ASSERT_EQ(3, recorder.mCalls);
    EXPECT_EQ(InputEvent::KeyEvent, recorder.mSeen[0].type);
    EXPECT_EQ(KeyEventInfo::KeyPressed, recorder.mSeen[0].infoType);
    EXPECT_EQ(InputEvent::SysWMEvent, recorder.mSeen[1].type);
    EXPECT_EQ(SysWMEventInfo::SysWMExpose, recorder.mSeen[1].infoType);
    EXPECT_EQ(0, recorder.mSeen[1].width);
    EXPECT_EQ(KeyEventInfo::KeyReleased, recorder.mSeen[2].infoType);
    for (const Seen& seen : recorder.mSeen) {
        EXPECT_EQ(123456789012LL, seen.timestamp);
        EXPECT_EQ(-1, seen.windowId);
        EXPECT_EQ(nullptr, seen.device);
    }
    poll(5);
    EXPECT_EQ(3, recorder.mCalls);
}

TEST_F(SDLInputProviderTest, KeyEventsCarryCodesModifiersAndTheTypedCharacter) {
    push(key(SDL_KEYDOWN, SDLK_a, 38, KMOD_LSHIFT | KMOD_CAPS, 'A'));
    poll(1);
    ASSERT_EQ(1, recorder.mCalls);
    const Seen& seen = recorder.mSeen[0];
    EXPECT_EQ(38, seen.keycode);
    EXPECT_EQ(SDLK_a, seen.keySymbol);
    EXPECT_EQ(0x001 | 0x200, seen.modifiers);
    EXPECT_EQ('A', seen.unicode);
}

TEST_F(SDLInputProviderTest, EveryModifierBitMapsToItsEngineBit) {
    const int pairs[][2] = {{KMOD_LSHIFT, 0x001}, {KMOD_RSHIFT, 0x002}, {KMOD_LCTRL, 0x004},
                            {KMOD_RCTRL, 0x008},  {KMOD_LALT, 0x010},   {KMOD_RALT, 0x020},
                            {KMOD_LMETA, 0x040},  {KMOD_RMETA, 0x080},  {KMOD_NUM, 0x100},
                            {KMOD_CAPS, 0x200},   {KMOD_MODE, 0x400}};
    for (const auto& pair : pairs)
        push(key(SDL_KEYDOWN, SDLK_LSHIFT, 50, pair[0]));
    push(key(SDL_KEYDOWN, SDLK_LSHIFT, 50, KMOD_LSHIFT | KMOD_RCTRL | KMOD_RALT | KMOD_LMETA | KMOD_MODE));
    poll(1);
    ASSERT_EQ(12, recorder.mCalls);
    for (int i = 0; i < 11; ++i)
        EXPECT_EQ(pairs[i][1], recorder.mSeen[i].modifiers) << "SDL modifier " << pairs[i][0];
    EXPECT_EQ(0x001 | 0x008 | 0x020 | 0x040 | 0x400, recorder.mSeen[11].modifiers);
}

TEST_F(SDLInputProviderTest, MouseMotionGivesPositionAndRelativeMotion) {
    SDL_Event motion = make(SDL_MOUSEMOTION);
    motion.motion.x = 320;
    motion.motion.y = 200;
    motion.motion.xrel = -4;
    motion.motion.yrel = 7;
    push(motion);
    poll(1);
    ASSERT_EQ(1, recorder.mCalls);
    const Seen& seen = recorder.mSeen[0];
    EXPECT_EQ(1, seen.type);
    EXPECT_EQ(2, seen.axisCount);
    EXPECT_FLOAT_EQ(320.0f, seen.x);
    EXPECT_FLOAT_EQ(200.0f, seen.y);
    EXPECT_FLOAT_EQ(-4.0f, seen.relX);
    EXPECT_FLOAT_EQ(7.0f, seen.relY);
}

TEST_F(SDLInputProviderTest, ButtonsGiveNumberStateAndPointerPosition) {
    SDL_Event down = make(SDL_MOUSEBUTTONDOWN);
    down.button.button = SDL_BUTTON_RIGHT;
    down.button.x = 17;
    down.button.y = 99;
    push(down);
    SDL_Event up = make(SDL_MOUSEBUTTONUP);
    up.button.button = SDL_BUTTON_WHEELDOWN;
    push(up);
    poll(1);
    ASSERT_EQ(2, recorder.mCalls);
    EXPECT_EQ(InputEvent::ButtonEvent, recorder.mSeen[0].type);
    EXPECT_EQ(ButtonEventInfo::ButtonPressed, recorder.mSeen[0].infoType);
    EXPECT_EQ(3, recorder.mSeen[0].button);
    EXPECT_EQ(17, recorder.mSeen[0].buttonX);
    EXPECT_EQ(99, recorder.mSeen[0].buttonY);
    EXPECT_EQ(ButtonEventInfo::ButtonReleased, recorder.mSeen[1].infoType);
    EXPECT_EQ(5, recorder.mSeen[1].button);
}

TEST_F(SDLInputProviderTest, WindowMessagesBecomeSysWMEvents) {
    push(make(SDL_QUIT));
    SDL_Event resize = make(SDL_VIDEORESIZE);
    resize.resize.w = 640;
    resize.resize.h = 480;
    push(resize);
    poll(1);
    ASSERT_EQ(2, recorder.mCalls);
    EXPECT_EQ(InputEvent::SysWMEvent, recorder.mSeen[0].type);
    EXPECT_EQ(0, recorder.mSeen[0].infoType);
    EXPECT_EQ(0, recorder.mSeen[0].width);
    EXPECT_EQ(0, recorder.mSeen[0].height);
    EXPECT_EQ(SysWMEventInfo::SysWMResize, recorder.mSeen[1].infoType);
    EXPECT_EQ(640, recorder.mSeen[1].width);
    EXPECT_EQ(480, recorder.mSeen[1].height);
}

TEST_F(SDLInputProviderTest, OnlyInputFocusAndActivityChangeActivation) {
    push(active(1, SDL_APPINPUTFOCUS));
    push(active(0, SDL_APPMOUSEFOCUS));  // the pointer left the window: no event
    push(active(0, SDL_APPACTIVE));
    push(active(0, SDL_APPMOUSEFOCUS | SDL_APPINPUTFOCUS));
    poll(1);
    ASSERT_EQ(3, recorder.mCalls);
    EXPECT_EQ(SysWMEventInfo::SysWMActivate, recorder.mSeen[0].infoType);
    EXPECT_EQ(SysWMEventInfo::SysWMDeactivate, recorder.mSeen[1].infoType);
    EXPECT_EQ(SysWMEventInfo::SysWMDeactivate, recorder.mSeen[2].infoType);
}

TEST_F(SDLInputProviderTest, EventsWithoutInputMeaningAreDroppedAndTheRestStillArrive) {
    SDL_Event axis = make(SDL_JOYAXISMOTION);
    axis.jaxis.value = 1000;
    push(axis);
    push(make(SDL_JOYBUTTONDOWN));
    SDL_SysWMmsg message;
    std::memset(&message, 0, sizeof message);
    SDL_Event windowManager = make(SDL_SYSWMEVENT);
    windowManager.syswm.msg = &message;  // SDL copies the message when queueing
    push(windowManager);
    push(make(SDL_QUIT));
    poll(1);
    ASSERT_EQ(1, recorder.mCalls);
    EXPECT_EQ(SysWMEventInfo::SysWMQuit, recorder.mSeen[0].infoType);
}

TEST_F(SDLInputProviderTest, ADisabledProviderIsNotPolledAndKeepsTheQueue) {
    push(make(SDL_QUIT));
    provider->setEnabled(false);
    core.getProcessManager().updateSubsystem(1, true);
    EXPECT_EQ(0, recorder.mCalls);
    provider->setEnabled(true);
    core.getProcessManager().updateSubsystem(1, true);
    EXPECT_EQ(1, recorder.mCalls);
}
