#include "plugins/loader/devil/DevILTextureData.h"

#include "plugins/loader/devil/DevILSession.h"

namespace Velun {

DevILTextureData::DevILTextureData(ILuint image, const TextureInfo& info)
    : mImage(image), mInfo(info), mSession(DevILSession::current()) {}

DevILTextureData::~DevILTextureData() {
    if (isAlive())
        ilDeleteImages(1, &mImage);
}

bool DevILTextureData::isAlive() const { return mSession != 0 && mSession == DevILSession::current(); }

const TextureInfo& DevILTextureData::getTextureInfo() const { return mInfo; }

bool DevILTextureData::hasChanged(std::int64_t) const { return false; }

const void* DevILTextureData::getTextureData() const {
    if (!isAlive())
        return nullptr;
    ilBindImage(mImage);
    return ilGetData();
}

const void* DevILTextureData::getPixel(unsigned int x, unsigned int y, unsigned int z) const {
    if (x >= mInfo.getWidth() || y >= mInfo.getHeight() || z >= mInfo.getDepth())
        return nullptr;
    const unsigned char* data = static_cast<const unsigned char*>(getTextureData());
    if (!data)
        return nullptr;
    std::size_t index = x + static_cast<std::size_t>(mInfo.getWidth()) *
                                (y + static_cast<std::size_t>(mInfo.getHeight()) * z);
    return data + index * mInfo.getPixelSize();
}

bool DevILTextureData::copyData(unsigned int, unsigned int, unsigned int, unsigned int, unsigned int,
                                unsigned int, void*) const {
    return false;
}

}  // namespace Velun
