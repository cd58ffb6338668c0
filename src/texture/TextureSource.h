#pragma once

#include <cstdint>

#include "texture/TextureInfo.h"
#include "velun_export.h"

namespace Velun {

// Pixels with their description: an image from a loader, a block of memory
// (TextureData) or a composed image (TextureProxy). Rows are tightly packed, row after
// row, then slice after slice; row 0 is the top row.
class VELUN_EXPORT TextureSource {
public:
    virtual ~TextureSource();

    virtual const TextureInfo& getTextureInfo() const = 0;
    // True when the pixels changed at or after `stamp` (a TimerManager timestamp).
    virtual bool hasChanged(std::int64_t stamp) const = 0;
    // The first pixel, or null when there are none.
    virtual const void* getTextureData() const = 0;
    // Address of one pixel, or null outside the image.
    virtual const void* getPixel(unsigned int x, unsigned int y, unsigned int z) const = 0;
    // Copying a region out is not offered by the engine's sources: they answer false.
    virtual bool copyData(unsigned int x, unsigned int y, unsigned int z, unsigned int width,
                          unsigned int height, unsigned int depth, void* target) const = 0;
};

}  // namespace Velun
