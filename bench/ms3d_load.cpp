// MS3D load time from the page cache: the sample jeep and written grids of 12,500 and
// 50,000 triangles, in bytes per second of file. Reading, parsing and building the
// geometry are timed together, as ObjectManager runs them; the texture lookup is not
// (no texture mapper is installed). Set VELUN_PEER_MS3D_DIR to a folder holding the
// peer benchmark's bench12k.ms3d and bench50k.ms3d to time those files as well.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

#include "../tests/loader/Ms3dWriter.h"
#include "core/VelunCore.h"
#include "geometry/ObjectFactory.h"
#include "plugins/loader/ms3d/Ms3dFile.h"
#include "plugins/loader/ms3d/Ms3dObjectLoader.h"

namespace {

// A grid of `quads` quads per group as `groups` groups over one material: shared
// vertices, two triangles per quad.
ms3dtest::Model grid(unsigned quadsPerGroup, unsigned groups) {
    ms3dtest::Model model;
    unsigned width = static_cast<unsigned>(std::sqrt(static_cast<double>(quadsPerGroup)));
    if (width == 0)
        width = 1;
    unsigned rows = (quadsPerGroup + width - 1) / width;
    for (unsigned g = 0; g < groups; ++g) {
        ms3dtest::Group group;
        group.material = 0;
        std::size_t base = model.vertices.size();
        for (unsigned j = 0; j <= rows; ++j)
            for (unsigned i = 0; i <= width; ++i)
                model.vertices.push_back({static_cast<float>(i + g * (width + 2)),
                                          std::sin(0.3f * i) * std::cos(0.2f * j), static_cast<float>(j)});
        for (unsigned q = 0; q < quadsPerGroup; ++q) {
            unsigned i = q % width, j = q / width;
            auto at = [&](unsigned x, unsigned y) {
                return static_cast<std::uint16_t>(base + y * (width + 1) + x);
            };
            ms3dtest::Triangle a = ms3dtest::triangle(at(i, j), at(i, j + 1), at(i + 1, j));
            ms3dtest::Triangle b = ms3dtest::triangle(at(i + 1, j), at(i, j + 1), at(i + 1, j + 1));
            for (ms3dtest::Triangle* t : {&a, &b}) {
                for (int c = 0; c < 3; ++c) {
                    t->n[c][0] = 0;
                    t->n[c][1] = 1;
                    t->n[c][2] = 0;
                    t->s[c] = static_cast<float>(i) / width;
                    t->t[c] = static_cast<float>(j) / rows;
                }
                group.triangles.push_back(static_cast<std::uint16_t>(model.triangles.size()));
                model.triangles.push_back(*t);
            }
        }
        model.groups.push_back(group);
    }
    model.materials.push_back(ms3dtest::material(0.8f, 0.7f, 0.6f, ""));
    return model;
}

std::string writeGrid(unsigned int triangles) {
    std::string path =
        "/tmp/velun-bench-" + std::to_string(getpid()) + "-" + std::to_string(triangles) + ".ms3d";
    ms3dtest::save(path, ms3dtest::write(grid(triangles / 8, 4)));
    return path;
}

std::vector<unsigned char> readAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<unsigned char>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void loadFile(benchmark::State& state, const std::string& path) {
    Velun::VelunCore::getSingleton().startup();
    Velun::Ms3dObjectLoader loader;
    loader.initialize();
    Velun::NameMapper::ResourceInfo info("bench.ms3d", path, "ms3d");
    std::size_t bytes = readAll(path).size();
    if (!loader.load(info)) {
        state.SkipWithError(("cannot load " + path).c_str());
        return;
    }
    for (auto _ : state) {
        Dorvan::SharedPtr<Velun::ObjectFactory> factory = loader.load(info);
        benchmark::DoNotOptimize(factory.get());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
    state.counters["file_MB"] = static_cast<double>(bytes) / 1e6;
}

void parseOnly(benchmark::State& state, const std::string& path) {
    std::vector<unsigned char> bytes = readAll(path);
    Velun::Ms3dFile file;
    for (auto _ : state) {
        Velun::Ms3dFile::Result result = file.read(bytes.data(), bytes.size());
        benchmark::DoNotOptimize(result);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

struct Files {
    std::string jeep = VELUN_SOURCE_DIR "/tests/data/models/jeep1.ms3d";
    std::string grid12k = writeGrid(12496);
    std::string grid50k = writeGrid(50000);
    ~Files() {
        std::remove(grid12k.c_str());
        std::remove(grid50k.c_str());
    }
};

Files& files() {
    static Files f;
    return f;
}

int registerAll() {
    benchmark::RegisterBenchmark("ms3d_load/jeep", [](benchmark::State& s) {
        loadFile(s, files().jeep);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ms3d_load/grid12k", [](benchmark::State& s) {
        loadFile(s, files().grid12k);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ms3d_load/grid50k", [](benchmark::State& s) {
        loadFile(s, files().grid50k);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ms3d_parse/grid50k", [](benchmark::State& s) {
        parseOnly(s, files().grid50k);
    })->Unit(benchmark::kMillisecond);
    if (const char* peer = std::getenv("VELUN_PEER_MS3D_DIR")) {
        std::string dir = peer;
        benchmark::RegisterBenchmark("ms3d_load/peer_bench12k", [dir](benchmark::State& s) {
            loadFile(s, dir + "/bench12k.ms3d");
        })->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark("ms3d_load/peer_bench50k", [dir](benchmark::State& s) {
            loadFile(s, dir + "/bench50k.ms3d");
        })->Unit(benchmark::kMillisecond);
    }
    return 0;
}

const int registered = registerAll();

}  // namespace
