#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "core/MonotonicCounter.h"

using namespace Velun;

TEST(MonotonicCounterTest, ElapsedIsTheTimeBetweenTheLastTwoReadings) {
    MonotonicCounter counter;
    EXPECT_EQ(0.0, counter.getElapsedSeconds());
    counter.start();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    counter.update();
    double waited = counter.getElapsedSeconds();
    // A sleep lasts at least as long as asked; the upper bound only rules out
    // a wrong unit.
    EXPECT_GE(waited, 0.020);
    EXPECT_LT(waited, 10.0);

    counter.update();
    EXPECT_GE(counter.getElapsedSeconds(), 0.0);
    EXPECT_LT(counter.getElapsedSeconds(), waited);

    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    counter.stop();
    EXPECT_GE(counter.getElapsedSeconds(), 0.005);
}

TEST(MonotonicCounterTest, UpdateBeforeStartMeasuresFromConstruction) {
    MonotonicCounter counter;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    counter.update();
    EXPECT_GE(counter.getElapsedSeconds(), 0.005);
    EXPECT_LT(counter.getElapsedSeconds(), 10.0);
}
