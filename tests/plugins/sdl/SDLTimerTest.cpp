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

TEST_F(SDLTimerTest, OffersTimestampsAndCountersButNoTimers) {
    EXPECT_FALSE(timer.isInitialized());
    EXPECT_TRUE(timer.initialize());
    EXPECT_TRUE(timer.isInitialized());
    EXPECT_NE(0u, SDL_WasInit(SDL_INIT_TIMER));
    EXPECT_TRUE(timer.hasTimestamp());
    EXPECT_TRUE(timer.hasHighresCounter());
    EXPECT_FALSE(timer.hasTimer());
    EXPECT_FALSE(timer.createTimer());
    Dorvan::SharedPtr<Counter> counter = timer.createHighresCounter();
    ASSERT_TRUE(counter);
    counter->start();
    counter->update();
    EXPECT_GE(counter->getElapsedSeconds(), 0.0);
}

TEST_F(SDLTimerTest, TimestampIsWallClockMilliseconds) {
    std::int64_t before = static_cast<std::int64_t>(std::time(nullptr)) * 1000;
    timer.initialize();
    std::int64_t stamp = timer.getTimestamp();
    std::int64_t after = static_cast<std::int64_t>(std::time(nullptr)) * 1000;
    // Taken to the second at initialisation, then advanced by the tick count.
    EXPECT_GE(stamp, before);
    EXPECT_LE(stamp, after + 1000);
    EXPECT_GT(stamp, std::int64_t(1) << 32);
}

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

TEST_F(SDLTimerTest, ShutdownStopsSDL) {
    timer.initialize();
    EXPECT_TRUE(timer.shutdown());
    EXPECT_FALSE(timer.isInitialized());
    EXPECT_EQ(0u, SDL_WasInit(SDL_INIT_EVERYTHING));
    // Initialised again, it still tells wall-clock time.
    timer.initialize();
    EXPECT_GE(timer.getTimestamp(), static_cast<std::int64_t>(std::time(nullptr)) * 1000 - 1000);
}
