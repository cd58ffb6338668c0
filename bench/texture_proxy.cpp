// Composing a 1024 x 1024 TextureProxy from an RGB image and a one-channel mask, in bytes
// of the composed RGBA image per second, against memcpy of the same number of bytes.
// The composition should reach at least a quarter of the memcpy rate.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "foundation/CowMemPtr.h"
#include "texture/TextureData.h"
#include "texture/TextureProxy.h"

using namespace Velun;

namespace {

const unsigned int kSize = 1024;
const std::size_t kComposedBytes = std::size_t(kSize) * kSize * 4;

Dorvan::SharedPtr<TextureSource> makeImage(unsigned int size, Color::Format format) {
    TextureInfo info(size, size, 1, DataType::UnsignedByte, format);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(info.getMemSize());
    unsigned char* p = static_cast<unsigned char*>(pixels.get());
    for (unsigned int i = 0; i < info.getMemSize(); ++i)
        p[i] = static_cast<unsigned char>(i * 31 + (i >> 10));
    return Dorvan::SharedPtr<TextureSource>(new TextureData(info, pixels));
}

void BM_TextureProxyCompose(benchmark::State& state) {
    Dorvan::SharedPtr<TextureSource> colours = makeImage(kSize, Color::Rgb);
    Dorvan::SharedPtr<TextureSource> mask =
        makeImage(static_cast<unsigned int>(state.range(0)), Color::ColorIndex);
    for (auto _ : state) {
        TextureProxy proxy(colours, mask, 0.8f, 0.1f, 3);
        benchmark::DoNotOptimize(proxy.getTextureData());
    }
    state.SetBytesProcessed(state.iterations() * kComposedBytes);
}
// A mask of the same size, and one of half the size that is resampled.
BENCHMARK(BM_TextureProxyCompose)->Arg(kSize)->Arg(kSize / 2)->Unit(benchmark::kMillisecond);

void BM_MemcpySameBytes(benchmark::State& state) {
    std::vector<unsigned char> from(kComposedBytes, 7);
    for (auto _ : state) {
        // A fresh block each time, as the proxy allocates its image.
        unsigned char* to = static_cast<unsigned char*>(std::malloc(kComposedBytes));
        std::memcpy(to, from.data(), kComposedBytes);
        benchmark::DoNotOptimize(to);
        benchmark::ClobberMemory();
        std::free(to);
    }
    state.SetBytesProcessed(state.iterations() * kComposedBytes);
}
BENCHMARK(BM_MemcpySameBytes)->Unit(benchmark::kMillisecond);

}  // namespace
