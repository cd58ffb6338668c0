#pragma once

#include <IL/il.h>

#include "texture/TextureInfo.h"
#include "texture/TextureSource.h"
#include "velun_export.h"

namespace Velun {

// An image held by DevIL, offered as a TextureSource without a copy: every access binds
// the image and reads DevIL's own pixels. Owns the image. Row 0 is the top row.
class VELUN_EXPORT DevILTextureData : public TextureSource {
public:
    DevILTextureData(ILuint image, const TextureInfo& info);
    // Deletes the image, unless DevIL has been shut down since it was loaded (which
    // deleted it already).
    ~DevILTextureData() override;

    const TextureInfo& getTextureInfo() const override;
    // The pixels never change.
    bool hasChanged(std::int64_t stamp) const override;
    // Null once DevIL has been shut down.
    const void* getTextureData() const override;
    // Null at or beyond the size.
    const void* getPixel(unsigned int x, unsigned int y, unsigned int z) const override;
    // Not offered: false.
    bool copyData(unsigned int x, unsigned int y, unsigned int z, unsigned int width, unsigned int height,
                  unsigned int depth, void* target) const override;

    ILuint getImage() const { return mImage; }

    DevILTextureData(const DevILTextureData&) = delete;
    DevILTextureData& operator=(const DevILTextureData&) = delete;

private:
    bool isAlive() const;

    ILuint mImage;
    TextureInfo mInfo;
    // DevIL's image names restart after a shutdown; the session tells ours from a
    // newer image of the same name.
    unsigned int mSession;
};

}  // namespace Velun
