#include "core/MonotonicCounter.h"

namespace Velun {

MonotonicCounter::MonotonicCounter() : mLastCount(std::chrono::steady_clock::now()), mElapsed(0.0) {}

MonotonicCounter::~MonotonicCounter() {}

void MonotonicCounter::start() { mLastCount = std::chrono::steady_clock::now(); }

void MonotonicCounter::update() {
    std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now();
    mElapsed = std::chrono::duration<double>(now - mLastCount).count();
    mLastCount = now;
}

void MonotonicCounter::stop() { update(); }

double MonotonicCounter::getElapsedSeconds() { return mElapsed; }

}  // namespace Velun
