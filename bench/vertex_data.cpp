// Copying a VertexData shares its arrays, so the cost must not depend on the vertex
// count: compare the copy at 1 thousand and 1 million vertices (Complexity reports O(1)).
#include <benchmark/benchmark.h>

#include "geometry/VertexData.h"

using namespace Velun;

namespace {

void fill(VertexData& data, unsigned int count) {
    data.setUseNormal(true);
    data.setUseColor(true);
    data.setUseTexCoordinates(true);
    data.addTextureIndex(0);
    data.addTextureIndex(1);
    data.initialize(static_cast<int>(count), 1024);
    for (unsigned int i = 0; i < count; ++i) {
        data.addVertex();
        data.setVertex(float(i), 0.0f, 1.0f);
        data.setNormal(0.0f, 1.0f, 0.0f);
        data.setColor(1.0f, 1.0f, 1.0f, 1.0f);
        data.setTexCoordinate(0.5f, 0.5f, 0);
        data.setTexCoordinate(0.25f, 0.75f, 1);
    }
}

void BM_VertexDataCopy(benchmark::State& state) {
    VertexData source;
    fill(source, static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        VertexData copy(source);
        benchmark::DoNotOptimize(copy.getVertices());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_VertexDataCopy)->RangeMultiplier(32)->Range(1 << 10, 1 << 20)->Complexity(benchmark::o1);

// The first write after a copy pays for detaching one array, once.
void BM_VertexDataCopyThenWrite(benchmark::State& state) {
    VertexData source;
    fill(source, static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        VertexData copy(source);
        copy.setCurrentVertex(0);
        copy.setVertex(1.0f, 2.0f, 3.0f);
        benchmark::DoNotOptimize(copy.getVertices());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * 3 * sizeof(float));
}
BENCHMARK(BM_VertexDataCopyThenWrite)->Arg(1 << 20)->Unit(benchmark::kMicrosecond);

}  // namespace
