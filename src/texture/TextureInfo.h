#pragma once

#include "geometry/DataType.h"
#include "scene/Color.h"
#include "velun_export.h"

namespace Velun {

// Describes a block of pixels: size, components per pixel, component type and channel
// order. Set the channel count before the format: changing the count clears the format,
// and setting a format sets the count it implies.
class VELUN_EXPORT TextureInfo {
public:
    TextureInfo();
    // An image of `format` (which sets the channel count) in components of `type`.
    TextureInfo(unsigned int width, unsigned int height, unsigned int depth, DataType::Type type,
                Color::Format format);
    virtual ~TextureInfo();

    unsigned int getWidth() const { return mWidth; }
    void setWidth(unsigned int width) { mWidth = width; }
    unsigned int getHeight() const { return mHeight; }
    void setHeight(unsigned int height) { mHeight = height; }
    unsigned int getDepth() const { return mDepth; }
    void setDepth(unsigned int depth) { mDepth = depth; }
    unsigned int getChannels() const { return mChannels; }
    // A different count resets the colour format to None.
    void setChannels(unsigned int channels);
    DataType::Type getDataType() const { return mDataType; }
    void setDataType(DataType::Type type) { mDataType = type; }
    Color::Format getColorFormat() const { return mColorFormat; }
    // Also sets the channel count the format implies (1, 3 or 4).
    void setColorFormat(Color::Format format);

    // Bytes of the whole image: component size * channels * depth * height * width.
    unsigned int getMemSize() const;
    // Bytes of one pixel.
    unsigned int getPixelSize() const;

    // The colour of one pixel in this description. Channel count decides first: two
    // channels are luminance and alpha; one channel is grey for Luminance and alpha
    // otherwise (white colour). Bytes scale by 1/255; types other than UnsignedByte and
    // Float read as black. A null pixel reads as opaque black.
    Color getPixelColor(const void* pixel) const;

    bool operator==(const TextureInfo& other) const;
    bool operator!=(const TextureInfo& other) const { return !(*this == other); }

private:
    unsigned int mWidth;
    unsigned int mHeight;
    unsigned int mDepth;
    unsigned int mChannels;
    DataType::Type mDataType;
    Color::Format mColorFormat;
};

}  // namespace Velun
