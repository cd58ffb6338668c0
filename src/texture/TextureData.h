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
    virtual ~TextureData();

    virtual const TextureInfo& getTextureInfo() const;
    virtual bool hasChanged(std::int64_t stamp) const;
    virtual const void* getTextureData() const;
    // Null for a coordinate at or beyond the size, or when the block is too small.
    virtual const void* getPixel(unsigned int x, unsigned int y, unsigned int z) const;
    virtual bool copyData(unsigned int x, unsigned int y, unsigned int z, unsigned int width,
                          unsigned int height, unsigned int depth, void* target) const;

    const Dorvan::CowMemPtr<void>& getData() const { return mData; }

private:
    TextureInfo mInfo;
    Dorvan::CowMemPtr<void> mData;
};

}  // namespace Velun
