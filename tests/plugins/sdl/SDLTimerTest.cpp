#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdint>
#include <ctime>

#include "plugins/sdl/SDLTimer.h"

using namespace Velun;

namespace {

class SDLTimerTest : public testing::Test {
protected:
    void TearDown() override {
        timer.shutdown();
        if (SDL_WasInit(SDL_INIT_EVERYTHING) == 0)
            SDL_Quit();
    }
    SDLTimer timer;
};

// A timestamp with the tick counts read just before and after it.
struct Reading {
    std::int64_t before, timestamp, after;
};

Reading read(SDLTimer& timer) {
    Reading reading;
    reading.before = SDL_GetTicks();
    reading.timestamp = timer.getTimestamp();
    reading.after = SDL_GetTicks();
    return reading;
}

}  // namespace

TEST_F(SDLTimerTest, TimestampFollowsTheTickCountAndNeverGoesDown) {
    timer.initialize();
    Reading first = read(timer);
    std::int64_t previous = first.timestamp;
    for (int i = 0; i < 2000; ++i) {
        std::int64_t now = timer.getTimestamp();
        ASSERT_GE(now, previous);
        previous = now;
    }
    SDL_Delay(30);
    timer.initialize();  // initialised already: the time goes on undisturbed
    Reading second = read(timer);
    // The timestamps differ by as many milliseconds as the tick count advanced.
    EXPECT_GE(second.timestamp - first.timestamp, second.before - first.after);
    EXPECT_LE(second.timestamp - first.timestamp, second.after - first.before);
    EXPECT_GE(second.timestamp - first.timestamp, 30);
}
