#include "plugins/loader/devil/DdsFile.h"

#include <cstdint>
#include <cstring>
#include <sstream>

#include "texture/TextureData.h"

namespace Velun {

namespace {

const std::size_t kHeaderEnd = 128;  // magic and header; the surfaces follow

// Header flags the engine needs: caps, height, width, pixel format.
const std::uint32_t kRequiredFlags = 0x1 | 0x2 | 0x4 | 0x1000;
const std::uint32_t kMipMapCountFlag = 0x20000;
const std::uint32_t kDepthFlag = 0x800000;
// Pixel format flags.
const std::uint32_t kAlphaPixels = 0x1;
const std::uint32_t kFourCC = 0x4;
const std::uint32_t kRgb = 0x40;
const std::uint32_t kLuminance = 0x20000;
// Second caps word.
const std::uint32_t kCubeMap = 0x200;
const std::uint32_t kAllCubeFaces = 0xFC00;
const std::uint32_t kVolume = 0x200000;

std::uint32_t word(const unsigned char* at) {
    return std::uint32_t(at[0]) | std::uint32_t(at[1]) << 8 | std::uint32_t(at[2]) << 16 |
           std::uint32_t(at[3]) << 24;
}

// Offsets of the header fields from the start of the file.
enum Field : std::size_t {
    HeaderSize = 4,
    Flags = 8,
    Height = 12,
    Width = 16,
    Depth = 24,
    MipMapCount = 28,
    FormatSize = 76,
    FormatFlags = 80,
    FourCCCode = 84,
    BitCount = 88,
    Masks = 92,
    Caps2 = 112
};

std::string fourCCText(std::uint32_t code) {
    std::string text;
    for (int i = 0; i < 4; ++i) {
        char c = static_cast<char>((code >> (8 * i)) & 0xFF);
        text += c >= 32 && c < 127 ? c : '?';
    }
    return text;
}

// Whether `mask` is set and has no bit beyond `bits`.
bool maskFits(std::uint32_t mask, unsigned int bits) {
    return mask != 0 && (bits == 32 || (mask >> bits) == 0);
}

// The component under `mask`, scaled to 0-255.
unsigned char component(std::uint32_t pixel, std::uint32_t mask) {
    unsigned int shift = 0;
    while (!((mask >> shift) & 1))
        ++shift;
    std::uint64_t top = mask >> shift;
    std::uint64_t value = (pixel & mask) >> shift;
    return static_cast<unsigned char>(value * 255 / top);
}

unsigned int levelSize(unsigned int size, unsigned int level) { return size >> level ? size >> level : 1; }

}  // namespace

DdsFile::DdsFile() : mWidth(0), mHeight(0), mFaceCount(0), mLevelCount(0) {}

bool DdsFile::fail(const std::string& error) {
    mError = error;
    mSurfaces.clear();
    mFaceCount = mLevelCount = 0;
    return false;
}

bool DdsFile::read(const unsigned char* data, std::size_t size) {
    mError.clear();
    mSurfaces.clear();
    mLayout = Layout();
    if (size < 4 || std::memcmp(data, "DDS ", 4) != 0)
        return fail("not a DDS file");
    if (size < kHeaderEnd)
        return fail("the file ends inside the header");
    if (word(data + HeaderSize) != 124 || word(data + FormatSize) != 32)
        return fail("the header or pixel format has a wrong size field");
    std::uint32_t flags = word(data + Flags);
    if ((flags & kRequiredFlags) != kRequiredFlags) {
        std::ostringstream text;
        text << "the header flags 0x" << std::hex << flags << " do not announce size and pixel format";
        return fail(text.str());
    }
    mWidth = word(data + Width);
    mHeight = word(data + Height);
    if (mWidth == 0 || mHeight == 0 || mWidth > kMaxSize || mHeight > kMaxSize) {
        std::ostringstream text;
        text << "the size " << mWidth << "x" << mHeight << " is outside 1 to " << kMaxSize;
        return fail(text.str());
    }
    return readPixelFormat(data) && readSurfaceCounts(data) && readSurfaces(data, size);
}

bool DdsFile::readPixelFormat(const unsigned char* header) {
    std::uint32_t flags = word(header + FormatFlags);
    if (flags & kFourCC) {
        std::uint32_t code = word(header + FourCCCode);
        const char* names[] = {"DXT1", "DXT3", "DXT5"};
        const DxtBlocks::Format formats[] = {DxtBlocks::Format::Dxt1, DxtBlocks::Format::Dxt3,
                                             DxtBlocks::Format::Dxt5};
        for (int i = 0; i < 3; ++i) {
            if (fourCCText(code) == names[i]) {
                mLayout.compressed = true;
                mLayout.blocks = formats[i];
                return true;
            }
        }
        return fail("the compression \"" + fourCCText(code) + "\" is not read");
    }
    unsigned int bits = word(header + BitCount);
    mLayout.luminance = (flags & kLuminance) != 0;
    mLayout.alpha = (flags & kAlphaPixels) != 0;
    mLayout.bytesPerPixel = bits / 8;
    for (int c = 0; c < 4; ++c)
        mLayout.masks[c] = word(header + Masks + 4 * c);
    bool layoutKnown = (flags & (kRgb | kLuminance)) && bits % 8 == 0 && bits >= 8 && bits <= 32;
    bool masksFit =
        layoutKnown && maskFits(mLayout.masks[0], bits) &&
        (mLayout.luminance || (maskFits(mLayout.masks[1], bits) && maskFits(mLayout.masks[2], bits))) &&
        (!mLayout.alpha || maskFits(mLayout.masks[3], bits));
    if (!masksFit) {
        std::ostringstream text;
        text << "the pixel format (flags 0x" << std::hex << flags << std::dec << ", " << bits
             << " bits) is not RGB, RGBA or luminance with fitting masks";
        return fail(text.str());
    }
    return true;
}

bool DdsFile::readSurfaceCounts(const unsigned char* header) {
    std::uint32_t caps2 = word(header + Caps2);
    if ((caps2 & kVolume) || ((word(header + Flags) & kDepthFlag) && word(header + Depth) > 1))
        return fail("volume textures are not read");
    mFaceCount = 1;
    if (caps2 & kCubeMap) {
        if ((caps2 & kAllCubeFaces) != kAllCubeFaces || mWidth != mHeight)
            return fail("a cube map needs six square faces");
        mFaceCount = 6;
    }
    unsigned int fullChain = 1;
    while ((mWidth | mHeight) >> fullChain)
        ++fullChain;
    std::uint32_t levels = word(header + MipMapCount);
    mLevelCount = (word(header + Flags) & kMipMapCountFlag) && levels > 1 ? levels : 1;
    if (mLevelCount > fullChain) {
        std::ostringstream text;
        text << "the file announces " << levels << " mipmap levels, but a " << mWidth << "x" << mHeight
             << " image has " << fullChain;
        return fail(text.str());
    }
    return true;
}

std::size_t DdsFile::surfaceBytes(unsigned int width, unsigned int height) const {
    if (mLayout.compressed)
        return DxtBlocks::imageSize(mLayout.blocks, width, height);
    return static_cast<std::size_t>(width) * height * mLayout.bytesPerPixel;
}

bool DdsFile::readSurfaces(const unsigned char* data, std::size_t size) {
    std::size_t at = kHeaderEnd;
    for (unsigned int face = 0; face < mFaceCount; ++face) {
        for (unsigned int level = 0; level < mLevelCount; ++level) {
            unsigned int width = levelSize(mWidth, level), height = levelSize(mHeight, level);
            std::size_t bytes = surfaceBytes(width, height);
            if (size - at < bytes) {
                std::ostringstream text;
                text << "the file ends inside face " << face << " level " << level << ": it needs " << bytes
                     << " bytes, " << size - at << " are left";
                return fail(text.str());
            }
            mSurfaces.push_back(decodeSurface(data + at, width, height));
            at += bytes;
        }
    }
    return true;
}

Dorvan::SharedPtr<TextureData> DdsFile::decodeSurface(const unsigned char* data, unsigned int width,
                                                      unsigned int height) const {
    Color::Format format = Color::Rgba;
    if (!mLayout.compressed && !mLayout.alpha)
        format = mLayout.luminance ? Color::Luminance : Color::Rgb;
    TextureInfo info(width, height, 1, DataType::UnsignedByte, format);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(info.getMemSize());
    unsigned char* out = static_cast<unsigned char*>(pixels.get());
    if (mLayout.compressed)
        DxtBlocks::decode(mLayout.blocks, data, width, height, out);
    else
        decodeMasked(data, static_cast<std::size_t>(width) * height, info.getChannels(), out);
    return Dorvan::SharedPtr<TextureData>(new TextureData(info, pixels));
}

void DdsFile::decodeMasked(const unsigned char* data, std::size_t pixels, unsigned int channels,
                           unsigned char* out) const {
    // Luminance fills red, green and blue from its one mask.
    const int source[4] = {0, mLayout.luminance ? 0 : 1, mLayout.luminance ? 0 : 2, 3};
    for (std::size_t i = 0; i < pixels; ++i, data += mLayout.bytesPerPixel) {
        std::uint32_t pixel = 0;
        for (unsigned int b = 0; b < mLayout.bytesPerPixel; ++b)
            pixel |= std::uint32_t(data[b]) << (8 * b);
        for (unsigned int c = 0; c < channels; ++c)
            *out++ = component(pixel, mLayout.masks[source[c]]);
    }
}

Dorvan::SharedPtr<TextureData> DdsFile::getSurface(unsigned int face, unsigned int level) const {
    if (face >= mFaceCount || level >= mLevelCount)
        return Dorvan::SharedPtr<TextureData>();
    return mSurfaces[face * mLevelCount + level];
}

}  // namespace Velun
