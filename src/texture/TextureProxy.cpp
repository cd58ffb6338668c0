#include "texture/TextureProxy.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <sstream>
#include <vector>

#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "texture/TextureData.h"

namespace Velun {

namespace {

const float kByteScale = 0.003921569f;

// Where one output component of a byte composition comes from: a byte of the input pixel
// at `offset`, mapped through `table`. A constant component has a table that holds the
// constant everywhere.
struct ComponentRead {
    unsigned int offset;
    const unsigned char* table;
};

// Component offsets that stand for a constant rather than a byte of the pixel.
const int kConstantOne = -1;
const int kConstantZero = -2;

// Which byte of a pixel getPixelColor reads for red, green, blue and alpha; kConstantOne
// where it gives the constant 1.0.
struct ByteLayout {
    int component[4];
};

// The tables a byte composition maps input bytes through, as filled by
// TextureProxy::fillValueTables.
enum ValueTable { ColorValues, AlphaValues, ColorOne, AlphaOne, AlphaZero, ValueTableCount };

// The output component tables of a byte composition as 32-bit words with the byte in
// its place in memory, so that one pixel is the OR of four lookups and one store.
struct WordTables {
    std::uint32_t component[4][256];
    unsigned int offset[4];

    WordTables(const ComponentRead* reads) {
        for (int c = 0; c < 4; ++c) {
            offset[c] = reads[c].offset;
            for (int i = 0; i < 256; ++i) {
                unsigned char bytes[4] = {0, 0, 0, 0};
                bytes[c] = reads[c].table[i];
                std::memcpy(&component[c][i], bytes, 4);
            }
        }
    }
};

// One row of a byte composition. Everything the loop reads is passed by value, so the
// stores cannot make the compiler reload it; pixel sizes known at compile time (0 for
// "use the size passed") let it address the common rows directly. Without resampling
// the alpha pixel of column x is the x-th of its row.
template <unsigned int Stride, unsigned int AlphaStride>
void composeRow(const unsigned char* p, const unsigned char* alphaRow, const std::size_t* alphaColumn,
                unsigned int width, std::size_t pixelSize, std::size_t alphaPixelSize,
                const WordTables& tables, unsigned char* out) {
    const std::size_t step = Stride ? Stride : pixelSize;
    const std::size_t alphaStep = AlphaStride ? AlphaStride : alphaPixelSize;
    const std::uint32_t* const red = tables.component[0];
    const std::uint32_t* const green = tables.component[1];
    const std::uint32_t* const blue = tables.component[2];
    const std::uint32_t* const alpha = tables.component[3];
    const unsigned int r = tables.offset[0], g = tables.offset[1], b = tables.offset[2];
    alphaRow += tables.offset[3];
    for (unsigned int x = 0; x < width; ++x, p += step, out += 4) {
        std::size_t a = alphaColumn ? alphaColumn[x] : x * alphaStep;
        std::uint32_t word = red[p[r]] | green[p[g]] | blue[p[b]] | alpha[alphaRow[a]];
        std::memcpy(out, &word, 4);
    }
}

template <unsigned int Stride>
void composeRowFor(const unsigned char* p, const unsigned char* alphaRow, const std::size_t* alphaColumn,
                   unsigned int width, std::size_t pixelSize, std::size_t alphaPixelSize,
                   const WordTables& tables, unsigned char* out) {
    if (alphaColumn)
        composeRow<Stride, 0>(p, alphaRow, alphaColumn, width, pixelSize, alphaPixelSize, tables, out);
    else if (alphaPixelSize == 1)
        composeRow<Stride, 1>(p, alphaRow, nullptr, width, pixelSize, alphaPixelSize, tables, out);
    else
        composeRow<Stride, 0>(p, alphaRow, nullptr, width, pixelSize, alphaPixelSize, tables, out);
}

bool byteLayout(const TextureInfo& info, ByteLayout& layout) {
    unsigned int channels = info.getChannels();
    if (info.getDataType() != DataType::UnsignedByte || channels == 0)
        return false;
    if (channels >= 3)
        layout = {{0, 1, 2, channels >= 4 ? 3 : kConstantOne}};
    else if (channels == 2)
        layout = {{0, 0, 0, 1}};
    else if (info.getColorFormat() == Color::Luminance)
        layout = {{0, 0, 0, kConstantOne}};
    else
        layout = {{kConstantOne, kConstantOne, kConstantOne, 0}};
    return true;
}

// Rows can be read straight from the block only when it holds the whole image its
// description promises.
bool holdsWholeImage(const TextureSource& source) {
    const TextureData* data = dynamic_cast<const TextureData*>(&source);
    return !data || data->getData().getByteSize() >= source.getTextureInfo().getMemSize();
}

// The two images of a byte composition: colours from one, alpha from the other (the
// same image without an alpha source), with the byte each output component reads.
struct ByteImages {
    const TextureInfo* colorInfo;
    const TextureInfo* alphaInfo;
    const unsigned char* colorBytes;
    const unsigned char* alphaBytes;
    ByteLayout colorLayout;
    int alphaComponent;
    bool separateAlpha;
};

// False when either image is not a whole block of bytes the tables can read.
bool findByteImages(const TextureSource& source, const TextureSource* alphaSource, unsigned int alphaChannel,
                    ByteImages& images) {
    const TextureInfo& colorInfo = source.getTextureInfo();
    const TextureInfo& alphaInfo = alphaSource ? alphaSource->getTextureInfo() : colorInfo;
    ByteLayout alphaLayout;
    if (!byteLayout(colorInfo, images.colorLayout) || !byteLayout(alphaInfo, alphaLayout))
        return false;
    images.colorInfo = &colorInfo;
    images.alphaInfo = &alphaInfo;
    images.colorBytes = static_cast<const unsigned char*>(source.getTextureData());
    images.alphaBytes =
        alphaSource ? static_cast<const unsigned char*>(alphaSource->getTextureData()) : images.colorBytes;
    images.separateAlpha = alphaSource != nullptr;
    if (!images.colorBytes || !images.alphaBytes || alphaInfo.getWidth() == 0 || alphaInfo.getHeight() == 0 ||
        alphaInfo.getDepth() == 0 || !holdsWholeImage(source) ||
        (alphaSource && !holdsWholeImage(*alphaSource)))
        return false;
    // A colour-index image reads as grey from its value, opaque.
    if (colorInfo.getColorFormat() == Color::ColorIndex) {
        int grey = images.colorLayout.component[3];
        images.colorLayout = {{grey, grey, grey, kConstantOne}};
    }
    images.alphaComponent = images.colorLayout.component[3];
    if (alphaSource)
        images.alphaComponent = alphaChannel < 4 ? alphaLayout.component[alphaChannel] : kConstantZero;
    return true;
}

void chooseReads(const ByteImages& images, const unsigned char (*values)[256], ComponentRead* reads) {
    for (int c = 0; c < 3; ++c) {
        int offset = images.colorLayout.component[c];
        reads[c] = offset < 0 ? ComponentRead{0, values[ColorOne]}
                              : ComponentRead{static_cast<unsigned int>(offset), values[ColorValues]};
    }
    if (images.alphaComponent == kConstantZero)
        reads[3] = ComponentRead{0, values[AlphaZero]};
    else if (images.alphaComponent == kConstantOne)
        reads[3] = ComponentRead{0, values[AlphaOne]};
    else
        reads[3] = ComponentRead{static_cast<unsigned int>(images.alphaComponent), values[AlphaValues]};
}

// Byte offset of each output column's alpha pixel within its row; empty when both images
// have one size, so that column x reads alpha pixel x.
std::vector<std::size_t> alphaColumns(const ByteImages& images) {
    const TextureInfo& color = *images.colorInfo;
    const TextureInfo& alpha = *images.alphaInfo;
    std::vector<std::size_t> columns;
    if (alpha.getWidth() == color.getWidth() && alpha.getHeight() == color.getHeight() &&
        alpha.getDepth() == color.getDepth())
        return columns;
    const float xs = static_cast<float>(alpha.getWidth()) / color.getWidth();
    columns.resize(color.getWidth());
    for (unsigned int x = 0; x < color.getWidth(); ++x)
        columns[x] = static_cast<unsigned int>(x * xs) * alpha.getPixelSize();
    return columns;
}

void composeImage(const ByteImages& images, const WordTables& tables, unsigned char* out) {
    const TextureInfo& color = *images.colorInfo;
    const TextureInfo& alpha = *images.alphaInfo;
    const unsigned int width = color.getWidth(), height = color.getHeight(), depth = color.getDepth();
    const std::size_t colorPixel = color.getPixelSize(), alphaPixel = alpha.getPixelSize();
    const std::vector<std::size_t> columns = alphaColumns(images);
    const bool resample = !columns.empty();
    const std::size_t* column = resample ? columns.data() : nullptr;
    const float ys = static_cast<float>(alpha.getHeight()) / height;
    const float zs = static_cast<float>(alpha.getDepth()) / depth;
    for (unsigned int z = 0; z < depth; ++z) {
        unsigned int sz = resample ? static_cast<unsigned int>(z * zs) : z;
        for (unsigned int y = 0; y < height; ++y, out += std::size_t(width) * 4) {
            unsigned int sy = resample ? static_cast<unsigned int>(y * ys) : y;
            const unsigned char* colorRow =
                images.colorBytes + (static_cast<std::size_t>(z) * height + y) * width * colorPixel;
            const unsigned char* alphaRow =
                images.separateAlpha
                    ? images.alphaBytes + (static_cast<std::size_t>(sz) * alpha.getHeight() + sy) *
                                              alpha.getWidth() * alphaPixel
                    : colorRow;
            switch (colorPixel) {
            case 3:
                composeRowFor<3>(colorRow, alphaRow, column, width, colorPixel, alphaPixel, tables, out);
                break;
            case 4:
                composeRowFor<4>(colorRow, alphaRow, column, width, colorPixel, alphaPixel, tables, out);
                break;
            default:
                composeRowFor<0>(colorRow, alphaRow, column, width, colorPixel, alphaPixel, tables, out);
                break;
            }
        }
    }
}

// The image must fit the unsigned sizes the engine describes pixels with.
bool fitsMemSize(unsigned int width, unsigned int height, unsigned int depth) {
    std::uint64_t bytes = static_cast<std::uint64_t>(width) * height * depth * 4;
    return bytes <= std::numeric_limits<unsigned int>::max();
}

// Channel 0 red, 1 green, 2 blue, 3 alpha; 0 for any other.
float channelOf(const Color& color, unsigned int channel) {
    switch (channel) {
    case 0:
        return color.r;
    case 1:
        return color.g;
    case 2:
        return color.b;
    case 3:
        return color.a;
    default:
        return 0.0f;
    }
}

void logTooLarge(unsigned int width, unsigned int height, unsigned int depth) {
    std::ostringstream text;
    text << "TextureProxy: an image of " << width << " x " << height << " x " << depth
         << " pixels is too large";
    VelunCore::getLogger("texture")->error(text.str());
}

}  // namespace

TextureProxy::TextureProxy(unsigned int width, unsigned int height, const Color& color)
    : mModified(0), mData(nullptr) {
    createData(width, height, color);
}

TextureProxy::TextureProxy(Dorvan::SharedPtr<TextureSource> source,
                           Dorvan::SharedPtr<TextureSource> alphaSource, float scale, float bias,
                           unsigned int alphaChannel)
    : mModified(0), mData(nullptr) {
    updateData(source, alphaSource, scale, bias, alphaChannel);
}

TextureProxy::~TextureProxy() { std::free(mData); }

const TextureInfo& TextureProxy::getTextureInfo() const { return mInfo; }

bool TextureProxy::hasChanged(std::int64_t stamp) const { return mModified >= stamp; }

const void* TextureProxy::getTextureData() const { return mData; }

const void* TextureProxy::getPixel(unsigned int x, unsigned int y, unsigned int z) const {
    if (!mData || x >= mInfo.getWidth() || y >= mInfo.getHeight() || z >= mInfo.getDepth())
        return nullptr;
    std::size_t index = (static_cast<std::size_t>(z) * mInfo.getHeight() + y) * mInfo.getWidth() + x;
    return mData + index * 4;
}

bool TextureProxy::copyData(unsigned int, unsigned int, unsigned int, unsigned int, unsigned int,
                            unsigned int, void*) const {
    return false;
}

unsigned char TextureProxy::getPixelValue(float value, float scale, float bias) const {
    float v = (value * scale + bias) * 255.0f;
    if (v > 255.0f)
        v = 255.0f;
    if (!(v >= 0.0f))  // also catches NaN
        v = 0.0f;
    return static_cast<unsigned char>(v);
}

void TextureProxy::createData(unsigned int width, unsigned int height, const Color& color) {
    std::free(mData);
    mData = nullptr;
    if (!fitsMemSize(width, height, 1)) {
        logTooLarge(width, height, 1);
        width = height = 0;
    }
    mInfo.setChannels(4);
    mInfo.setColorFormat(Color::Rgba);
    mInfo.setDataType(DataType::UnsignedByte);
    mInfo.setWidth(width);
    mInfo.setHeight(height);
    mInfo.setDepth(1);
    mData = static_cast<unsigned char*>(std::malloc(mInfo.getMemSize()));
    if (!mData)
        return;

    const unsigned char pixel[4] = {getPixelValue(color.r, 1.0f, 0.0f), getPixelValue(color.g, 1.0f, 0.0f),
                                    getPixelValue(color.b, 1.0f, 0.0f), getPixelValue(color.a, 1.0f, 0.0f)};
    std::size_t count = static_cast<std::size_t>(width) * height;
    unsigned char* out = mData;
    for (std::size_t i = 0; i < count; ++i, out += 4)
        std::memcpy(out, pixel, 4);
}

void TextureProxy::updateData(Dorvan::SharedPtr<TextureSource> source,
                              Dorvan::SharedPtr<TextureSource> alphaSource, float scale, float bias,
                              unsigned int alphaChannel) {
    std::free(mData);
    mData = nullptr;
    if (!source)
        return;

    const TextureInfo& colorInfo = source->getTextureInfo();
    if (!fitsMemSize(colorInfo.getWidth(), colorInfo.getHeight(), colorInfo.getDepth())) {
        logTooLarge(colorInfo.getWidth(), colorInfo.getHeight(), colorInfo.getDepth());
        return;
    }
    mInfo.setChannels(4);
    mInfo.setColorFormat(Color::Rgba);
    mInfo.setDataType(DataType::UnsignedByte);
    mInfo.setWidth(colorInfo.getWidth());
    mInfo.setHeight(colorInfo.getHeight());
    mInfo.setDepth(colorInfo.getDepth());
    mData = static_cast<unsigned char*>(std::malloc(mInfo.getMemSize()));
    if (!mData || mInfo.getMemSize() == 0)
        return;

    if (!composeBytes(*source, alphaSource.get(), scale, bias, alphaChannel))
        composePixels(*source, alphaSource.get(), scale, bias, alphaChannel);
}

// Byte sources (the usual case: images, light maps, masks) go row by row through lookup
// tables built with getPixelValue, which gives exactly the bytes of the per-pixel path
// below at a fraction of its cost.
bool TextureProxy::composeBytes(const TextureSource& source, const TextureSource* alphaSource, float scale,
                                float bias, unsigned int alphaChannel) {
    ByteImages images;
    if (!findByteImages(source, alphaSource, alphaChannel, images))
        return false;
    unsigned char values[ValueTableCount][256];
    fillValueTables(scale, bias, values);
    ComponentRead reads[4];
    chooseReads(images, values, reads);
    composeImage(images, WordTables(reads), mData);
    return true;
}

void TextureProxy::fillValueTables(float scale, float bias, unsigned char (*values)[256]) const {
    for (unsigned int i = 0; i < 256; ++i) {
        values[ColorValues][i] = getPixelValue(i * kByteScale, scale, bias);
        values[AlphaValues][i] = getPixelValue(i * kByteScale, 1.0f, 0.0f);
    }
    std::memset(values[ColorOne], getPixelValue(1.0f, scale, bias), 256);
    std::memset(values[AlphaOne], getPixelValue(1.0f, 1.0f, 0.0f), 256);
    std::memset(values[AlphaZero], getPixelValue(0.0f, 1.0f, 0.0f), 256);
}

void TextureProxy::composePixels(const TextureSource& source, const TextureSource* alphaSource, float scale,
                                 float bias, unsigned int alphaChannel) {
    const TextureInfo& colorInfo = source.getTextureInfo();
    const TextureInfo& alphaInfo = alphaSource ? alphaSource->getTextureInfo() : colorInfo;
    const bool resample = alphaInfo.getWidth() != colorInfo.getWidth() ||
                          alphaInfo.getHeight() != colorInfo.getHeight() ||
                          alphaInfo.getDepth() != colorInfo.getDepth();
    const bool indexed = colorInfo.getColorFormat() == Color::ColorIndex;
    const float xs = static_cast<float>(alphaInfo.getWidth()) / colorInfo.getWidth();
    const float ys = static_cast<float>(alphaInfo.getHeight()) / colorInfo.getHeight();
    const float zs = static_cast<float>(alphaInfo.getDepth()) / colorInfo.getDepth();

    unsigned char* out = mData;
    for (unsigned int z = 0; z < colorInfo.getDepth(); ++z) {
        for (unsigned int y = 0; y < colorInfo.getHeight(); ++y) {
            for (unsigned int x = 0; x < colorInfo.getWidth(); ++x, out += 4) {
                Color color = colorInfo.getPixelColor(source.getPixel(x, y, z));
                if (indexed)
                    color = Color(color.a, color.a, color.a, 1.0f);
                if (alphaSource) {
                    unsigned int sx = x, sy = y, sz = z;
                    if (resample) {
                        sx = static_cast<unsigned int>(x * xs);
                        sy = static_cast<unsigned int>(y * ys);
                        sz = static_cast<unsigned int>(z * zs);
                    }
                    color.a =
                        channelOf(alphaInfo.getPixelColor(alphaSource->getPixel(sx, sy, sz)), alphaChannel);
                }
                out[0] = getPixelValue(color.r, scale, bias);
                out[1] = getPixelValue(color.g, scale, bias);
                out[2] = getPixelValue(color.b, scale, bias);
                out[3] = getPixelValue(color.a, 1.0f, 0.0f);
            }
        }
    }
}

bool TextureProxy::copyRect(Dorvan::SharedPtr<TextureSource> source, unsigned int destX, unsigned int destY,
                            unsigned int, unsigned int sourceX, unsigned int sourceY, unsigned int,
                            unsigned int width, unsigned int height, unsigned int) {
    if (!source)
        return false;
    const TextureInfo& info = source->getTextureInfo();
    // Clip to both images; only the first slice is copied.
    unsigned int ownWidth = mInfo.getWidth(), ownHeight = mInfo.getHeight();
    unsigned int srcWidth = info.getWidth(), srcHeight = info.getHeight();
    if (!mData || destX >= ownWidth || destY >= ownHeight || sourceX >= srcWidth || sourceY >= srcHeight)
        return false;
    width = std::min(width, std::min(ownWidth - destX, srcWidth - sourceX));
    height = std::min(height, std::min(ownHeight - destY, srcHeight - sourceY));
    if (width == 0 || height == 0)
        return false;

    const unsigned char* from = static_cast<const unsigned char*>(source->getTextureData());
    if (from && info.getColorFormat() == mInfo.getColorFormat() &&
        info.getDataType() == mInfo.getDataType()) {
        const std::size_t pixelSize = info.getPixelSize();
        const std::size_t destStride = ownWidth * pixelSize;
        const std::size_t sourceStride = srcWidth * pixelSize;
        from += sourceY * sourceStride + sourceX * pixelSize;
        unsigned char* to = mData + destY * destStride + destX * pixelSize;
        for (unsigned int row = 0; row < height; ++row, from += sourceStride, to += destStride)
            std::memmove(to, from, width * pixelSize);
    }
    TimerManager* timer = VelunCore::getSingleton().findTimerManager();
    mModified = timer ? timer->getTimestamp() : 0;
    return true;
}

}  // namespace Velun
