#include "texture/TextureInfo.h"

namespace Velun {

namespace {

const float kByteScale = 0.003921569f;

}  // namespace

TextureInfo::TextureInfo()
    : mWidth(0), mHeight(0), mDepth(0), mChannels(0), mDataType(DataType::None), mColorFormat(Color::None) {}

TextureInfo::TextureInfo(unsigned int width, unsigned int height, unsigned int depth, DataType::Type type,
                         Color::Format format)
    : mWidth(width), mHeight(height), mDepth(depth), mChannels(0), mDataType(type),
      mColorFormat(Color::None) {
    setColorFormat(format);
}

TextureInfo::~TextureInfo() {}

void TextureInfo::setChannels(unsigned int channels) {
    if (channels == mChannels)
        return;
    mChannels = channels;
    mColorFormat = Color::None;
}

void TextureInfo::setColorFormat(Color::Format format) {
    mColorFormat = format;
    switch (format) {
    case Color::ColorIndex:
    case Color::Luminance:
        mChannels = 1;
        break;
    case Color::Rgb:
    case Color::Bgr:
        mChannels = 3;
        break;
    case Color::Rgba:
    case Color::Bgra:
        mChannels = 4;
        break;
    default:
        break;
    }
}

unsigned int TextureInfo::getMemSize() const { return getPixelSize() * mDepth * mHeight * mWidth; }

unsigned int TextureInfo::getPixelSize() const { return DataType::getSize(mDataType) * mChannels; }

Color TextureInfo::getPixelColor(const void* pixel) const {
    if (!pixel)
        return Color();
    if (mDataType == DataType::UnsignedByte) {
        const unsigned char* p = static_cast<const unsigned char*>(pixel);
        if (mChannels >= 3)
            return Color(p[0] * kByteScale, p[1] * kByteScale, p[2] * kByteScale,
                         mChannels >= 4 ? p[3] * kByteScale : 1.0f);
        if (mChannels == 2) {
            float grey = p[0] * kByteScale;
            return Color(grey, grey, grey, p[1] * kByteScale);
        }
        if (mChannels == 1) {
            float value = p[0] * kByteScale;
            if (mColorFormat == Color::Luminance)
                return Color(value, value, value, 1.0f);
            return Color(1.0f, 1.0f, 1.0f, value);
        }
    } else if (mDataType == DataType::Float) {
        const float* p = static_cast<const float*>(pixel);
        if (mChannels >= 3)
            return Color(p[0], p[1], p[2], mChannels >= 4 ? p[3] : 1.0f);
        if (mChannels == 2)
            return Color(p[0], p[0], p[0], p[1]);
        if (mChannels == 1) {
            if (mColorFormat == Color::Luminance)
                return Color(p[0], p[0], p[0], 1.0f);
            return Color(1.0f, 1.0f, 1.0f, p[0]);
        }
    }
    return Color(0.0f, 0.0f, 0.0f, 1.0f);
}

bool TextureInfo::operator==(const TextureInfo& other) const {
    return mWidth == other.mWidth && mHeight == other.mHeight && mDepth == other.mDepth &&
           mChannels == other.mChannels && mDataType == other.mDataType && mColorFormat == other.mColorFormat;
}

}  // namespace Velun
