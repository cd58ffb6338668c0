// MS3D load time from the page cache: the sample jeep and written grids of 12,500 and
// 50,000 triangles, in bytes per second of file. Reading, parsing and building the
// geometry are timed together, as ObjectManager runs them; the texture lookup is not
// (no texture mapper is installed). Set VELUN_PEER_MS3D_DIR to a folder holding the
// peer benchmark's bench12k.ms3d and bench50k.ms3d to time those files as well.

#include <benchmark/benchmark.h>

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

std::string writeGrid(unsigned int triangles) {
    std::string path =
        "/tmp/velun-bench-" + std::to_string(getpid()) + "-" + std::to_string(triangles) + ".ms3d";
    ms3dtest::save(path, ms3dtest::write(ms3dtest::grid(triangles / 8, 4)));
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
