// Particle clouds on a synthetic clock of 16 ms frames.
//   update/N          steady state of about N live particles (N per second emitted, lives
//                     of 1000 ms, gravity plus a random force): one update, which emits,
//                     ages, moves and rebuilds the drawn list and box. The peer program
//                     irr_particles measures the same work; compare particles_per_ms.
//   emit_reused       100,000 particles emitted by a PointEmitter into freed slots
//   fill_1M_slots     1,000,000 particles added to an empty cloud
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>

#include "../tests/support/EngineClock.h"
#include "particle/LinearForceModel.h"
#include "particle/ParticleEngine.h"
#include "particle/PointEmitter.h"

using namespace Velun;
using Dorvan::SharedPtr;
typedef Dorvan::TVector<float, 3> Vec;

namespace {

const int kFrameMs = 16;
const std::int64_t kStart = 1000;

// Timestamps by hand, so that initialize and start take a known time.
void useClock() {
    static VelunTest::EngineClock clock;
    clock.setTime(kStart);
}

SharedPtr<PointEmitter> fountain(float perSecond) {
    SharedPtr<PointEmitter> emitter(new PointEmitter());
    emitter->setPointsPerSecond(perSecond);
    emitter->setPointAge(1000, 1000);
    emitter->setUseRandomForce(true);
    emitter->setRandomForce(2, 8, 2);
    emitter->setSphereSize(0, 1);
    return emitter;
}

void update(benchmark::State& state) {
    useClock();
    const int n = static_cast<int>(state.range(0));
    ParticleEngine engine;
    engine.setEmitter(fountain(float(n)));
    SharedPtr<LinearForceModel> forces(new LinearForceModel());
    forces->setExtForce(Vec(0, -9.81f, 0));
    forces->setRandomForce(Vec(0.1f, 0.1f, 0.1f));
    engine.setForceModel(forces);
    engine.initialize();
    engine.start();
    std::int64_t now = kStart;
    for (int i = 0; i < 2 * 1000 / kFrameMs; ++i)  // fill up, then one more lifetime
        engine.update(now += kFrameMs);
    const double live = engine.getParticleData().getParticleCount(false);
    for (auto _ : state)
        engine.update(now += kFrameMs);
    state.counters["live"] = live;
    state.counters["particles_per_ms"] =
        benchmark::Counter(live * state.iterations() * 1e-3, benchmark::Counter::kIsRate);
}
// Wall-clock time, as the peer program measures.
BENCHMARK(update)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond)->UseRealTime();

void emit_reused(benchmark::State& state) {
    useClock();
    const int n = 100000;
    SharedPtr<PointEmitter> emitter = fountain(0);
    emitter->setInitPointCount(n);
    ParticleData data;
    data.initialize();
    emitter->initParticles(data, kStart);
    for (auto _ : state) {
        state.PauseTiming();
        data.clear();
        state.ResumeTiming();
        emitter->initParticles(data, kStart);
    }
    state.counters["particles_per_ms"] =
        benchmark::Counter(double(n) * state.iterations() * 1e-3, benchmark::Counter::kIsRate);
}
BENCHMARK(emit_reused)->Unit(benchmark::kMillisecond);

void fill_1M_slots(benchmark::State& state) {
    std::unique_ptr<ParticleData> data;
    for (auto _ : state) {
        state.PauseTiming();  // the last cloud's release is not part of the fill
        data.reset(new ParticleData());
        data->initialize();
        state.ResumeTiming();
        for (int i = 0; i < 1000000; ++i)
            data->addParticle(Vec(float(i), 0, 0), 0);
        benchmark::DoNotOptimize(data->getSlotCount());
    }
}
BENCHMARK(fill_1M_slots)->Unit(benchmark::kMillisecond);

}  // namespace
