#include "plugins/sdl/SDLTimer.h"

#include <SDL.h>

#include <ctime>

#ifdef _WIN32
#include "core/Win32HighresCounter.h"
#else
#include "core/MonotonicCounter.h"
#endif

namespace Velun {

SDLTimer::SDLTimer() : mInitialized(false), mTimeOffset(0), mLastTicks(0), mTickWraps(0) {}

SDLTimer::~SDLTimer() {
    if (mInitialized)
        shutdown();
}

bool SDLTimer::isInitialized() { return mInitialized; }

bool SDLTimer::initialize() {
    // A second offset, read to the second again, could set the time back.
    if (mInitialized)
        return true;
    // No parachute: a library must not take the application's fatal signals over.
    SDL_Init(SDL_INIT_TIMER | SDL_INIT_NOPARACHUTE);
    mLastTicks = SDL_GetTicks();
    mTickWraps = 0;
    mTimeOffset =
        static_cast<std::int64_t>(std::time(nullptr)) * 1000 - static_cast<std::int64_t>(mLastTicks);
    mInitialized = true;
    return true;
}

bool SDLTimer::shutdown() {
    if (!mInitialized)
        return true;
    SDL_QuitSubSystem(SDL_INIT_TIMER);
    // Video belongs to the render engine; SDL ends once the last of its parts has.
    if (SDL_WasInit(SDL_INIT_EVERYTHING) == 0)
        SDL_Quit();
    mInitialized = false;
    return true;
}

bool SDLTimer::hasTimestamp() { return true; }

bool SDLTimer::hasHighresCounter() { return true; }

bool SDLTimer::hasTimer() { return false; }

std::int64_t SDLTimer::getTimestampResolution() { return 1; }

std::int64_t SDLTimer::getTimerResolution() { return 1; }

double SDLTimer::getHighresCounterResolution() { return 0.1; }

std::int64_t SDLTimer::getTimestamp() {
    std::uint32_t ticks = SDL_GetTicks();
    if (ticks < mLastTicks)
        mTickWraps += static_cast<std::int64_t>(1) << 32;
    mLastTicks = ticks;
    return mTimeOffset + mTickWraps + static_cast<std::int64_t>(ticks);
}

Dorvan::SharedPtr<Timer> SDLTimer::createTimer() { return Dorvan::SharedPtr<Timer>(); }

Dorvan::SharedPtr<Counter> SDLTimer::createHighresCounter() {
#ifdef _WIN32
    return Dorvan::SharedPtr<Counter>(new Win32HighresCounter());
#else
    return Dorvan::SharedPtr<Counter>(new MonotonicCounter());
#endif
}

}  // namespace Velun
