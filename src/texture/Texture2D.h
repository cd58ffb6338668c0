#pragma once

#include <cstdint>

#include "foundation/SharedPtr.h"
#include "texture/Texture.h"
#include "texture/TextureSource.h"
#include "velun_export.h"

namespace Velun {

// A two-dimensional texture over one source, one image at one level. Replacing the
// source stamps the texture, so every render context loads it again at its next use;
// a change inside the source is told by the source's own hasChanged.
class VELUN_EXPORT Texture2D : public Texture {
public:
    Texture2D();
    explicit Texture2D(Dorvan::SharedPtr<TextureSource> source);
    ~Texture2D() override;

    TextureType getTextureType() const override;
    // True when the source was replaced at or after `stamp`; always true for stamp 0.
    bool hasChanged(std::int64_t stamp) const override;
    // The one source, whatever the arguments.
    Dorvan::SharedPtr<TextureSource> getTextureSource(unsigned int index, unsigned int level) const override;

    void setTextureSource(Dorvan::SharedPtr<TextureSource> source);

private:
    Dorvan::SharedPtr<TextureSource> mSource;
    std::int64_t mModified;
};

}  // namespace Velun
