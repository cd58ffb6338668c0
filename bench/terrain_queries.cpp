// Ground queries and tile building of the terrain, without a window.
//
// BM_Peer*: the peers' terrain (irr_terrain): a 257 x 257 height map of smooth hills
// over 256 x 256 units, 0 to 25 high, queried at random points. BM_Tiled*: 4 x 4 tiles
// of 256 x 256 maps, 256 units each. Items per second are queries per second; compare
// getSurfacePoint with irr_terrain_getHeight_ns of the same run (bench/compare_terrain.sh);
// both are wall-clock times.
// BM_UpdateTile: one tile with colour map, base map, two masked layers and a light map,
// rebuilt; "time_per_vertex" should stay flat as the vertex count grows.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/VelunCore.h"
#include "foundation/CowMemPtr.h"
#include "terrain/Terrain.h"
#include "terrain/TerrainTile.h"
#include "texture/TextureData.h"
#include "texture/TextureInfo.h"

namespace {

using Dorvan::SharedPtr;
using namespace Velun;

// The peers' hills: symmetric, 0 to 255.
int hill(int u, int v) {
    const double k = 2 * 3.14159265358979323846 / 256, a = k * (u - 128), b = k * (v - 128);
    const double h =
        0.5 + 0.2 * std::cos(3 * a) + 0.2 * std::cos(3 * b) + 0.1 * std::cos(7 * a) * std::cos(7 * b);
    return std::max(0, std::min(255, int(std::lround(255 * h))));
}

SharedPtr<TextureSource> image(unsigned int size, Color::Format format, int (*value)(int, int)) {
    TextureInfo info(size, size, 1, DataType::UnsignedByte, format);
    Dorvan::CowMemPtr<void> data;
    data.alloc(info.getMemSize());
    unsigned char* p = static_cast<unsigned char*>(data.get());
    for (unsigned int y = 0; y < size; ++y)
        for (unsigned int x = 0; x < size; ++x)
            for (unsigned int c = 0; c < info.getChannels(); ++c)
                *p++ = static_cast<unsigned char>(value(int(x + c * 17), int(y)));
    return SharedPtr<TextureSource>(new TextureData(info, data));
}

struct Engine {
    Engine() { VelunCore::getSingleton().startup(); }
};

// A terrain of tiles x tiles, each `pixels` wide over 256 units, 25 high.
std::unique_ptr<Terrain> makeTerrain(unsigned int tiles, unsigned int pixels) {
    static Engine engine;
    std::unique_ptr<Terrain> terrain(new Terrain(tiles, tiles));
    terrain->initializeTerrain(4, 4, 256.0f);
    SharedPtr<TextureSource> heights = image(pixels, Color::Luminance, hill);
    for (unsigned int y = 0; y < tiles; ++y)
        for (unsigned int x = 0; x < tiles; ++x) {
            terrain->getTile(x, y)->load(heights);
            terrain->getTile(x, y)->setMaxHeight(25.0f);
        }
    return terrain;
}

std::vector<Point> randomPoints(float size) {
    std::vector<Point> points;
    std::uint32_t state = 4242;
    auto next = [&state, size]() {
        state = state * 1664525u + 1013904223u;
        return float(state >> 8) / float(1u << 24) * size;
    };
    for (int i = 0; i < 4096; ++i) {
        float x = next();
        points.push_back(Point(x, 30.0f, next()));
    }
    return points;
}

template <class Query>
void runQueries(benchmark::State& state, unsigned int tiles, unsigned int pixels, Query query) {
    std::unique_ptr<Terrain> terrain = makeTerrain(tiles, pixels);
    const std::vector<Point> points = randomPoints(terrain->getSizeX());
    float sum = 0.0f;
    for (auto _ : state) {
        for (Point const& p : points)
            sum += query(*terrain, p);
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(std::int64_t(state.iterations()) * std::int64_t(points.size()));
}

float surface(Terrain const& terrain, Point const& p) { return terrain.getSurfacePoint(p)[1]; }
float normal(Terrain const& terrain, Point const& p) { return terrain.getNormal(p)[0]; }

void BM_PeerTerrainSurfacePoint(benchmark::State& state) { runQueries(state, 1, 257, surface); }
void BM_TiledTerrainSurfacePoint(benchmark::State& state) { runQueries(state, 4, 256, surface); }
void BM_PeerTerrainNormal(benchmark::State& state) { runQueries(state, 1, 257, normal); }
void BM_TiledTerrainNormal(benchmark::State& state) { runQueries(state, 4, 256, normal); }

int stripes(int x, int y) { return ((x / 8 + y / 8) & 1) * 255; }
int halves(int x, int) { return x < 32 ? 0 : 255; }

void BM_UpdateTile(benchmark::State& state) {
    static Engine engine;
    const unsigned int levels = static_cast<unsigned int>(state.range(0));
    Terrain terrain(1, 1);
    terrain.initializeTerrain(levels - 2, 2, 256.0f);
    Terrain::Tile& tile = *terrain.getTile(0, 0);
    const unsigned int n = tile.getVertexNumPerEdge();
    tile.load(image(n, Color::Luminance, hill));
    tile.setColorMap(image(64, Color::Rgb, stripes));
    tile.setBaseMap(image(64, Color::Rgb, stripes), 16.0f);
    tile.addTextureLayer(image(64, Color::Rgb, stripes), image(64, Color::Luminance, halves), 8.0f);
    tile.addTextureLayer(image(64, Color::Rgb, stripes), image(64, Color::Luminance, stripes), 8.0f);
    tile.setLightMap(image(64, Color::Rgb, hill), 1.0f, 0.0f);
    tile.setEnabled(true);
    for (auto _ : state)
        tile.updateTile();
    state.counters["vertices"] = double(n) * n;
    state.counters["time_per_vertex"] = benchmark::Counter(
        double(state.iterations()) * n * n, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

BENCHMARK(BM_PeerTerrainSurfacePoint)->UseRealTime();
BENCHMARK(BM_TiledTerrainSurfacePoint)->UseRealTime();
BENCHMARK(BM_PeerTerrainNormal)->UseRealTime();
BENCHMARK(BM_TiledTerrainNormal)->UseRealTime();
BENCHMARK(BM_UpdateTile)->Arg(6)->Arg(7)->Arg(8)->Unit(benchmark::kMillisecond);

}  // namespace
