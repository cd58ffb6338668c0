#include "plugins/sdl/SDLPlugin.h"

#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "input/InputManager.h"
#include "plugins/sdl/SDLInputProvider.h"
#include "plugins/sdl/SDLTimer.h"

namespace Velun {

SDLPlugin::SDLPlugin() : mInputProvider(nullptr), mTimer(nullptr) {}

SDLPlugin::~SDLPlugin() { unregisterPlugin(); }

int SDLPlugin::registerPlugin() {
    if (mInputProvider)
        return 0;
    VelunCore& core = VelunCore::getSingleton();
    mInputProvider = new SDLInputProvider();
    core.getInputManager().registerInputProvider(*mInputProvider);
    mTimer = new SDLTimer();
    core.getTimerManager().registerTimerPlugin(*mTimer);
    return 0;
}

int SDLPlugin::unregisterPlugin() {
    VelunCore& core = VelunCore::getSingleton();
    if (mTimer) {
        if (TimerManager* timers = core.findTimerManager())
            timers->unregisterTimerPlugin(*mTimer);
        mTimer->shutdown();
        delete mTimer;
        mTimer = nullptr;
    }
    if (mInputProvider) {
        if (InputManager* input = core.findInputManager())
            input->unregisterInputProvider(*mInputProvider);
        delete mInputProvider;
        mInputProvider = nullptr;
    }
    return 0;
}

}  // namespace Velun
