#include "particle/ParticleRandom.h"

#include <chrono>

namespace Velun {

namespace {

ParticleRandom& processGenerator() {
    static ParticleRandom generator(
        static_cast<std::uint64_t>(std::chrono::high_resolution_clock::now().time_since_epoch().count()));
    return generator;
}

}  // namespace

ParticleRandom ParticleRandom::shared() { return processGenerator(); }

void ParticleRandom::store(ParticleRandom const& random) { processGenerator() = random; }

}  // namespace Velun
