// Water ribbons: a winding river of lines one unit apart, ten units wide.
//   water_query/N     one getPointHandle per item on a ribbon of N quads, at points spread
//                     over and beside the whole ribbon (a point beside it tests every quad);
//                     the search is linear in N
//   water_build       a new Water grown to 100,000 quads by addQuad, then deleted
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "core/VelunCore.h"
#include "water/Water.h"

namespace {

using Velun::Point;

void startEngine() {
    static bool started = (Velun::VelunCore::getSingleton().startup(), true);
    (void)started;
}

float bend(int line) { return 3.0f * std::sin(0.1f * float(line)); }

void buildRiver(Velun::Water& water, int quads) {
    for (int line = 0; line <= quads; ++line)
        water.addQuad(Point(bend(line) - 5.0f, 0.0f, float(line)),
                      Point(bend(line) + 5.0f, 0.0f, float(line)), 1.0f);
}

void water_query(benchmark::State& state) {
    startEngine();
    int const quads = int(state.range(0));
    Velun::Water water;
    buildRiver(water, quads);
    std::mt19937 random(7);
    std::uniform_real_distribution<float> across(-10.0f, 10.0f), along(0.0f, float(quads));
    std::vector<Point> points;
    for (int i = 0; i < 1024; ++i)
        points.push_back(Point(across(random), 1.0f, along(random)));
    std::size_t next = 0;
    for (auto _ : state) {
        Velun::Water::PointHandle handle = water.getPointHandle(points[next]);
        benchmark::DoNotOptimize(handle);
        next = (next + 1) % points.size();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(water_query)->Arg(1)->Arg(10)->Arg(100)->Arg(1000);

void water_build(benchmark::State& state) {
    startEngine();
    for (auto _ : state) {
        Velun::Water* water = new Velun::Water();
        buildRiver(*water, 100000);
        benchmark::DoNotOptimize(water->getQuadCount());
        delete water;
    }
}
BENCHMARK(water_build)->Unit(benchmark::kMillisecond);

}  // namespace
