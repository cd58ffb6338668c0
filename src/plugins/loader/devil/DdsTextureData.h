#pragma once

#include <vector>

#include "foundation/SharedPtr.h"
#include "texture/TextureData.h"
#include "velun_export.h"

namespace Velun {

class DdsFile;

// The pixels of a DDS file as the loader hands them out: as a TextureSource it is the
// first face at full size; the other mipmap levels and cube faces are at hand for a
// texture that uses them.
class VELUN_EXPORT DdsTextureData : public TextureData {
public:
    // `file` must have been read successfully.
    explicit DdsTextureData(const DdsFile& file);
    ~DdsTextureData() override;

    // 6 for a cube map (faces +x, -x, +y, -y, +z, -z), otherwise 1.
    unsigned int getFaceCount() const { return mFaceCount; }
    unsigned int getLevelCount() const { return mLevelCount; }
    // Null outside the counts; level 0 of face 0 is this image itself.
    Dorvan::SharedPtr<TextureData> getSurface(unsigned int face, unsigned int level) const;

private:
    unsigned int mFaceCount;
    unsigned int mLevelCount;
    std::vector<Dorvan::SharedPtr<TextureData>> mSurfaces;
};

}  // namespace Velun
