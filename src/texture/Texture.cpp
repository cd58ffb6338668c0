#include "texture/Texture.h"

#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "texture/TextureManager.h"
#include "texture/TextureSource.h"

namespace Velun {

namespace {

TextureManager* findTextureManager() {
    ResourceManager* resources = VelunCore::getSingleton().findResourceManager();
    return resources ? resources->findTextureManager() : nullptr;
}

}  // namespace

Texture::Texture(unsigned int channels, unsigned int texCount)
    : mTextureId(0), mChannels(channels), mTexCount(texCount), mTexMode(Modulate),
      mBorderColor(0.0f, 0.0f, 0.0f, 1.0f), mConstantColor(0.0f, 0.0f, 0.0f, 1.0f), mMagFilter(Linear),
      mMinFilter(Linear), mMipMapChooseFilter(Linear), mMipMapFilter(Linear), mGenerateMipMaps(false),
      mMinMipMapLevel(0), mMaxMipMapLevel(5),
      mWrapModes(static_cast<std::size_t>(channels) * texCount, Repeat) {
    // Without an engine (before startup, after shutdown) a texture still works, with id 0.
    if (TextureManager* manager = findTextureManager())
        mTextureId = manager->createTextureId();
}

Texture::~Texture() {
    if (TextureManager* manager = findTextureManager())
        manager->returnTextureId(mTextureId);
}

void Texture::setTexMode(TexMode mode) { mTexMode = mode; }

void Texture::setBorderColor(const Color& color) { mBorderColor = color; }

void Texture::setMagFilter(TexFilter filter) { mMagFilter = (filter == Nearest) ? Nearest : Linear; }

void Texture::setMinFilter(TexFilter filter) {
    switch (filter) {
    case Trilinear:
        mMinFilter = MipMap;
        mMipMapChooseFilter = Linear;
        mMipMapFilter = Linear;
        break;
    case Bilinear:
        mMinFilter = Linear;
        break;
    default:
        mMinFilter = filter;
        break;
    }
}

void Texture::setMipMapFilter(TexFilter chooseFilter, TexFilter filter) {
    mMipMapChooseFilter = (chooseFilter == Nearest) ? Nearest : Linear;
    mMipMapFilter = (filter == Nearest) ? Nearest : Linear;
}

void Texture::setAllFilters(TexFilter filter) {
    setMinFilter(filter);
    setMagFilter(filter);
}

void Texture::setWrapMode(TexWrap mode, unsigned int axis, unsigned int index) {
    if (axis < mChannels && index < mTexCount)
        mWrapModes[static_cast<std::size_t>(index) * mChannels + axis] = mode;
}

void Texture::setAllWrapModes(TexWrap mode) { mWrapModes.assign(mWrapModes.size(), mode); }

void Texture::setGenerateMipMaps(bool generate) { mGenerateMipMaps = generate; }

void Texture::setMipMapLevels(unsigned int minLevel, unsigned int maxLevel) {
    mMinMipMapLevel = minLevel;
    mMaxMipMapLevel = maxLevel;
}

void Texture::setConstantColor(const Color& color) { mConstantColor = color; }

unsigned int Texture::getTextureId() const { return mTextureId; }

unsigned int Texture::getTexCount() const { return mTexCount; }

unsigned int Texture::getChannels() const { return mChannels; }

Texture::TexMode Texture::getTexMode() const { return mTexMode; }

const Color& Texture::getBorderColor() const { return mBorderColor; }

Color Texture::getConstantColor() const { return mConstantColor; }

Texture::TexWrap Texture::getWrapMode(unsigned int axis, unsigned int index) const {
    if (axis < mChannels && index < mTexCount)
        return mWrapModes[static_cast<std::size_t>(index) * mChannels + axis];
    return Repeat;
}

Texture::TexFilter Texture::getMagFilter() const { return mMagFilter; }

Texture::TexFilter Texture::getMinFilter() const { return mMinFilter; }

Texture::TexFilter Texture::getMipMapChooseFilter() const { return mMipMapChooseFilter; }

Texture::TexFilter Texture::getMipMapFilter() const { return mMipMapFilter; }

bool Texture::doGenerateMipMaps() const { return mGenerateMipMaps; }

unsigned int Texture::getMinMipMapLevel() const { return mMinMipMapLevel; }

unsigned int Texture::getMaxMipMapLevel() const { return mMaxMipMapLevel; }

}  // namespace Velun
