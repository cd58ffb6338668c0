// DDS files from arbitrary bytes, read in memory by the engine's own reader: every input
// is refused or decoded without a read or write outside its blocks, and every surface
// holds the pixels its description promises.

#include <cstddef>
#include <cstdint>

#include "plugins/loader/devil/DdsFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Velun::DdsFile file;
    if (!file.read(data, size))
        return 0;
    volatile std::uint8_t sink = 0;
    for (unsigned int face = 0; face < file.getFaceCount(); ++face) {
        for (unsigned int level = 0; level < file.getLevelCount(); ++level) {
            Dorvan::SharedPtr<Velun::TextureData> surface = file.getSurface(face, level);
            const Velun::TextureInfo& info = surface->getTextureInfo();
            const std::uint8_t* last = static_cast<const std::uint8_t*>(
                surface->getPixel(info.getWidth() - 1, info.getHeight() - 1, 0));
            if (!last)
                __builtin_trap();
            sink = sink ^ last[info.getPixelSize() - 1];
        }
    }
    return 0;
}
