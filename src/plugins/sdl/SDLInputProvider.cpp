#include "plugins/sdl/SDLInputProvider.h"

#include <SDL.h>

#include "input/InputEvent.h"

namespace Velun {

namespace {

// SDL modifier bits and the engine's, in the order of the engine's bits.
const struct {
    int sdl;
    unsigned short engine;
} kModifiers[] = {
    {KMOD_LSHIFT, KeyEventInfo::ModLeftShift}, {KMOD_RSHIFT, KeyEventInfo::ModRightShift},
    {KMOD_LCTRL, KeyEventInfo::ModLeftCtrl},   {KMOD_RCTRL, KeyEventInfo::ModRightCtrl},
    {KMOD_LALT, KeyEventInfo::ModLeftAlt},     {KMOD_RALT, KeyEventInfo::ModRightAlt},
    {KMOD_LMETA, KeyEventInfo::ModLeftMeta},   {KMOD_RMETA, KeyEventInfo::ModRightMeta},
    {KMOD_NUM, KeyEventInfo::ModNumLock},      {KMOD_CAPS, KeyEventInfo::ModCapsLock},
    {KMOD_MODE, KeyEventInfo::ModMode},
};

}  // namespace

SDLInputProvider::SDLInputProvider() : InputProvider(-1) {}

SDLInputProvider::~SDLInputProvider() {}

bool SDLInputProvider::needsPolling() { return true; }

void SDLInputProvider::pollEvents(std::int64_t timestamp) {
    // Starting SDL's video resets its character translation, so it is switched on
    // here rather than once; the flag is a plain variable inside SDL.
    SDL_EnableUNICODE(1);
    InputEvent event(timestamp);
    SDL_Event sdlEvent;
    while (SDL_PollEvent(&sdlEvent)) {
        if (translateEvent(event, sdlEvent))
            sendEvent(event);
    }
}

bool SDLInputProvider::translateEvent(InputEvent& event, const SDL_Event& sdlEvent) {
    InputEvent::EventType type;
    InputEventInfo* info = nullptr;
    switch (sdlEvent.type) {
    case SDL_ACTIVEEVENT:
        // Mouse focus alone comes and goes as the pointer crosses the window.
        if (!(sdlEvent.active.state & (SDL_APPINPUTFOCUS | SDL_APPACTIVE)))
            return false;
        type = InputEvent::SysWMEvent;
        info = new SysWMEventInfo(
            sdlEvent.active.gain ? SysWMEventInfo::SysWMActivate : SysWMEventInfo::SysWMDeactivate, 0, 0);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        type = InputEvent::KeyEvent;
        info = new KeyEventInfo(
            sdlEvent.type == SDL_KEYDOWN ? KeyEventInfo::KeyPressed : KeyEventInfo::KeyReleased,
            sdlEvent.key.keysym.scancode, static_cast<unsigned short>(sdlEvent.key.keysym.sym),
            translateModifiers(sdlEvent.key.keysym.mod), sdlEvent.key.keysym.unicode);
        break;
    case SDL_MOUSEMOTION: {
        type = InputEvent::MoveEvent;
        Dorvan::Vector<float> axes;
        axes.add(static_cast<float>(sdlEvent.motion.x));
        axes.add(static_cast<float>(sdlEvent.motion.y));
        Dorvan::Vector<float> relativeAxes;
        relativeAxes.add(static_cast<float>(sdlEvent.motion.xrel));
        relativeAxes.add(static_cast<float>(sdlEvent.motion.yrel));
        info = new MoveEventInfo(axes, relativeAxes);
        break;
    }
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        type = InputEvent::ButtonEvent;
        info = new ButtonEventInfo(sdlEvent.type == SDL_MOUSEBUTTONDOWN ? ButtonEventInfo::ButtonPressed
                                                                        : ButtonEventInfo::ButtonReleased,
                                   sdlEvent.button.button, sdlEvent.button.x, sdlEvent.button.y);
        break;
    case SDL_QUIT:
        type = InputEvent::SysWMEvent;
        info = new SysWMEventInfo(SysWMEventInfo::SysWMQuit, 0, 0);
        break;
    case SDL_VIDEORESIZE:
        type = InputEvent::SysWMEvent;
        info = new SysWMEventInfo(SysWMEventInfo::SysWMResize, sdlEvent.resize.w, sdlEvent.resize.h);
        break;
    case SDL_VIDEOEXPOSE:
        type = InputEvent::SysWMEvent;
        info = new SysWMEventInfo(SysWMEventInfo::SysWMExpose, 0, 0);
        break;
    default:
        return false;
    }
    event.setWindowId(-1);
    event.setInputDevice(nullptr);
    event.setEventType(type, *info);
    return true;
}

unsigned short SDLInputProvider::translateModifiers(int sdlMod) {
    unsigned short mask = KeyEventInfo::ModNone;
    for (const auto& modifier : kModifiers) {
        if (sdlMod & modifier.sdl)
            mask |= modifier.engine;
    }
    return mask;
}

}  // namespace Velun
