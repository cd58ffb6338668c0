#include "plugins/loader/devil/DdsTextureData.h"

#include "plugins/loader/devil/DdsFile.h"

namespace Velun {

DdsTextureData::DdsTextureData(const DdsFile& file)
    : TextureData(file.getSurface(0, 0)->getTextureInfo(), file.getSurface(0, 0)->getData()),
      mFaceCount(file.getFaceCount()), mLevelCount(file.getLevelCount()) {
    for (unsigned int face = 0; face < mFaceCount; ++face) {
        for (unsigned int level = 0; level < mLevelCount; ++level)
            mSurfaces.push_back(file.getSurface(face, level));
    }
}

DdsTextureData::~DdsTextureData() {}

Dorvan::SharedPtr<TextureData> DdsTextureData::getSurface(unsigned int face, unsigned int level) const {
    if (face >= mFaceCount || level >= mLevelCount)
        return Dorvan::SharedPtr<TextureData>();
    return mSurfaces[face * mLevelCount + level];
}

}  // namespace Velun
