#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "foundation/SharedPtr.h"
#include "plugins/loader/devil/DxtBlocks.h"
#include "texture/TextureData.h"
#include "velun_export.h"

namespace Velun {

// A DirectDraw Surface (".dds") read from memory by the engine itself: 2D images and
// cube maps with their mipmap levels, uncompressed RGB, RGBA and luminance of 8 to 32
// bits a pixel (any channel masks), and DXT1, DXT3 and DXT5 blocks. Every surface is
// decoded to bytes: Rgb, Rgba or Luminance, compressed ones to Rgba. Each size, flag
// and count is checked against the bytes that are there before anything is allocated,
// so a damaged file is refused with a description of the fault.
class VELUN_EXPORT DdsFile {
public:
    DdsFile();

    // False, with getError() telling why, when the block is not a DDS file the engine
    // reads; the surfaces are then empty.
    bool read(const unsigned char* data, std::size_t size);
    const std::string& getError() const { return mError; }

    // 6 for a cube map (faces +x, -x, +y, -y, +z, -z), otherwise 1.
    unsigned int getFaceCount() const { return mFaceCount; }
    // Mipmap levels of every face; level 0 is the full size.
    unsigned int getLevelCount() const { return mLevelCount; }
    // Null outside the counts.
    Dorvan::SharedPtr<TextureData> getSurface(unsigned int face, unsigned int level) const;

    // The largest width or height read.
    static const unsigned int kMaxSize = 16384;

private:
    // How the pixels of every surface are stored.
    struct Layout {
        bool compressed = false;
        DxtBlocks::Format blocks = DxtBlocks::Format::Dxt1;
        unsigned int bytesPerPixel = 0;
        // Red, green, blue, alpha; luminance files keep their grey in the red mask.
        unsigned int masks[4] = {};
        bool luminance = false;
        bool alpha = false;
    };

    bool fail(const std::string& error);
    bool readPixelFormat(const unsigned char* header);
    bool readSurfaceCounts(const unsigned char* header);
    std::size_t surfaceBytes(unsigned int width, unsigned int height) const;
    bool readSurfaces(const unsigned char* data, std::size_t size);
    Dorvan::SharedPtr<TextureData> decodeSurface(const unsigned char* data, unsigned int width,
                                                 unsigned int height) const;
    void decodeMasked(const unsigned char* data, std::size_t pixels, unsigned int channels,
                      unsigned char* out) const;

    std::string mError;
    unsigned int mWidth;
    unsigned int mHeight;
    unsigned int mFaceCount;
    unsigned int mLevelCount;
    Layout mLayout;
    // Face after face, each from level 0 down.
    std::vector<Dorvan::SharedPtr<TextureData>> mSurfaces;
};

}  // namespace Velun
