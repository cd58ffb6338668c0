#ifdef _WIN32

#include "core/Win32HighresCounter.h"

#include <windows.h>

namespace Velun {

namespace {

std::int64_t readCounter() {
    LARGE_INTEGER count;
    QueryPerformanceCounter(&count);
    return count.QuadPart;
}

}  // namespace

Win32HighresCounter::Win32HighresCounter() : mLastCount(readCounter()), mFrequency(0), mElapsed(0.0) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    mFrequency = frequency.QuadPart;
}

Win32HighresCounter::~Win32HighresCounter() {}

void Win32HighresCounter::start() { mLastCount = readCounter(); }

void Win32HighresCounter::update() {
    std::int64_t count = readCounter();
    mElapsed = static_cast<double>(count - mLastCount) / static_cast<double>(mFrequency);
    mLastCount = count;
}

void Win32HighresCounter::stop() { update(); }

double Win32HighresCounter::getElapsedSeconds() { return mElapsed; }

}  // namespace Velun

#endif
