#pragma once

#include <cstdint>

#include "velun_export.h"

namespace Velun {

// The particle module's own random numbers, in the range of the C library's rand (0 to
// 32767), so that clouds never disturb an application's rand sequence and no lock is taken
// per draw. One process-wide generator, seeded once from the clock; a hot loop copies it
// into a local with shared(), draws, and stores it back with store().
class VELUN_EXPORT ParticleRandom {
public:
    static const int Max = 32767;

    explicit ParticleRandom(std::uint64_t seed) : mState(seed ? seed : 0x9E3779B97F4A7C15ull) {}

    // A copy of the process's generator.
    static ParticleRandom shared();
    // Makes `random` the process's generator, so that the next draws continue its sequence.
    static void store(ParticleRandom const& random);

    // One value from 0 to Max.
    int next() { return static_cast<int>(step() >> 49); }
    // Three values from 0 to Max at the price of one step (the top 45 bits of the output).
    void nextThree(int& a, int& b, int& c) {
        std::uint64_t bits = step();
        a = static_cast<int>(bits >> 49);
        b = static_cast<int>((bits >> 34) & 0x7FFF);
        c = static_cast<int>((bits >> 19) & 0x7FFF);
    }

private:
    // xorshift64*: a full 2^64 - 1 period whose high bits pass the usual tests.
    std::uint64_t step() {
        mState ^= mState >> 12;
        mState ^= mState << 25;
        mState ^= mState >> 27;
        return mState * 0x2545F4914F6CDD1Dull;
    }

    std::uint64_t mState;
};

}  // namespace Velun
