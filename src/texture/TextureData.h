#pragma once

#include "foundation/CowMemPtr.h"
#include "texture/TextureSource.h"
#include "velun_export.h"

namespace Velun {

// Pixels in memory, described by a TextureInfo. The block is copy-on-write, so several
// TextureData may share one image. Its pixels never count as changed.
class VELUN_EXPORT TextureData : public TextureSource {
public:
    TextureData(const TextureInfo& info, Dorvan::CowMemPtr<void> data);
    ~TextureData() override;

    const TextureInfo& getTextureInfo() const override;
    bool hasChanged(std::int64_t stamp) const override;
    const void* getTextureData() const override;
    // Null for a coordinate at or beyond the size, or when the block is too small.
    const void* getPixel(unsigned int x, unsigned int y, unsigned int z) const override;
    bool copyData(unsigned int x, unsigned int y, unsigned int z, unsigned int width, unsigned int height,
                  unsigned int depth, void* target) const override;

    const Dorvan::CowMemPtr<void>& getData() const { return mData; }

private:
    TextureInfo mInfo;
    Dorvan::CowMemPtr<void> mData;
};

}  // namespace Velun
