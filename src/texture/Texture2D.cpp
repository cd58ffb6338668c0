#include "texture/Texture2D.h"

#include "core/TimerManager.h"
#include "core/VelunCore.h"

namespace Velun {

Texture2D::Texture2D() : Texture(2, 1), mModified(0) {}

Texture2D::Texture2D(Dorvan::SharedPtr<TextureSource> source)
    : Texture(2, 1), mSource(source), mModified(0) {}

Texture2D::~Texture2D() {}

Texture::TextureType Texture2D::getTextureType() const { return Type2D; }

bool Texture2D::hasChanged(std::int64_t stamp) const { return mModified >= stamp; }

Dorvan::SharedPtr<TextureSource> Texture2D::getTextureSource(unsigned int, unsigned int) const {
    return mSource;
}

void Texture2D::setTextureSource(Dorvan::SharedPtr<TextureSource> source) {
    mSource = source;
    TimerManager* timer = VelunCore::getSingleton().findTimerManager();
    mModified = timer ? timer->getTimestamp() : 0;
}

}  // namespace Velun
