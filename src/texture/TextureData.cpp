#include "texture/TextureData.h"

#include <cstddef>

namespace Velun {

TextureData::TextureData(const TextureInfo& info, Dorvan::CowMemPtr<void> data) : mInfo(info), mData(data) {}

TextureData::~TextureData() {}

const TextureInfo& TextureData::getTextureInfo() const { return mInfo; }

bool TextureData::hasChanged(std::int64_t) const { return false; }

const void* TextureData::getTextureData() const { return mData.get(); }

const void* TextureData::getPixel(unsigned int x, unsigned int y, unsigned int z) const {
    if (x >= mInfo.getWidth() || y >= mInfo.getHeight() || z >= mInfo.getDepth() || mData.isNull())
        return nullptr;
    std::size_t width = mInfo.getWidth();
    std::size_t index = (static_cast<std::size_t>(z) * mInfo.getHeight() + y) * width + x;
    std::size_t offset = index * mInfo.getPixelSize();
    if (offset + mInfo.getPixelSize() > mData.getByteSize())
        return nullptr;
    return static_cast<const unsigned char*>(mData.get()) + offset;
}

bool TextureData::copyData(unsigned int, unsigned int, unsigned int, unsigned int, unsigned int, unsigned int,
                           void*) const {
    return false;
}

}  // namespace Velun
