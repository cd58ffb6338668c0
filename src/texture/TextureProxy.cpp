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

// Which byte of a pixel getPixelColor reads for red, green, blue and alpha; -1 where it
// gives the constant 1.0.
struct ByteLayout {
    int component[4];
};

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
        layout = {{0, 1, 2, channels >= 4 ? 3 : -1}};
    else if (channels == 2)
        layout = {{0, 0, 0, 1}};
    else if (info.getColorFormat() == Color::Luminance)
        layout = {{0, 0, 0, -1}};
    else
        layout = {{-1, -1, -1, 0}};
    return true;
}

// Rows can be read straight from the block only when it holds the whole image its
// description promises.
bool holdsWholeImage(const TextureSource& source) {
    const TextureData* data = dynamic_cast<const TextureData*>(&source);
    return !data || data->getData().getByteSize() >= source.getTextureInfo().getMemSize();
}

// The image must fit the unsigned sizes the engine describes pixels with.
bool fitsMemSize(unsigned int width, unsigned int height, unsigned int depth) {
    std::uint64_t bytes = static_cast<std::uint64_t>(width) * height * depth * 4;
    return bytes <= std::numeric_limits<unsigned int>::max();
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

    const TextureInfo& info1 = source->getTextureInfo();
    if (!fitsMemSize(info1.getWidth(), info1.getHeight(), info1.getDepth())) {
        logTooLarge(info1.getWidth(), info1.getHeight(), info1.getDepth());
        return;
    }
    mInfo.setChannels(4);
    mInfo.setColorFormat(Color::Rgba);
    mInfo.setDataType(DataType::UnsignedByte);
    mInfo.setWidth(info1.getWidth());
    mInfo.setHeight(info1.getHeight());
    mInfo.setDepth(info1.getDepth());
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
    const TextureInfo& info1 = source.getTextureInfo();
    const TextureInfo& info2 = alphaSource ? alphaSource->getTextureInfo() : info1;
    ByteLayout layout1;
    ByteLayout layout2;
    if (!byteLayout(info1, layout1) || !byteLayout(info2, layout2))
        return false;
    const unsigned char* data1 = static_cast<const unsigned char*>(source.getTextureData());
    const unsigned char* data2 =
        alphaSource ? static_cast<const unsigned char*>(alphaSource->getTextureData()) : data1;
    if (!data1 || !data2 || info2.getWidth() == 0 || info2.getHeight() == 0 || info2.getDepth() == 0 ||
        !holdsWholeImage(source) || (alphaSource && !holdsWholeImage(*alphaSource)))
        return false;

    unsigned char colorTable[256];
    unsigned char alphaTable[256];
    for (unsigned int i = 0; i < 256; ++i) {
        colorTable[i] = getPixelValue(i * kByteScale, scale, bias);
        alphaTable[i] = getPixelValue(i * kByteScale, 1.0f, 0.0f);
    }
    unsigned char colorOne[256];
    unsigned char alphaOne[256];
    unsigned char alphaZero[256];
    std::memset(colorOne, getPixelValue(1.0f, scale, bias), sizeof(colorOne));
    std::memset(alphaOne, getPixelValue(1.0f, 1.0f, 0.0f), sizeof(alphaOne));
    std::memset(alphaZero, getPixelValue(0.0f, 1.0f, 0.0f), sizeof(alphaZero));

    // A colour-index image reads as grey from its value, opaque.
    if (info1.getColorFormat() == Color::ColorIndex) {
        int grey = layout1.component[3];
        layout1 = {{grey, grey, grey, -1}};
    }
    ComponentRead reads[4];
    for (int c = 0; c < 3; ++c) {
        int offset = layout1.component[c];
        reads[c] = offset < 0 ? ComponentRead{0, colorOne}
                              : ComponentRead{static_cast<unsigned int>(offset), colorTable};
    }
    int alphaOffset = layout1.component[3];
    if (alphaSource)
        alphaOffset = alphaChannel < 4 ? layout2.component[alphaChannel] : -2;
    if (alphaOffset == -2)
        reads[3] = ComponentRead{0, alphaZero};
    else if (alphaOffset < 0)
        reads[3] = ComponentRead{0, alphaOne};
    else
        reads[3] = ComponentRead{static_cast<unsigned int>(alphaOffset), alphaTable};

    const unsigned int width = info1.getWidth();
    const unsigned int height = info1.getHeight();
    const unsigned int depth = info1.getDepth();
    const std::size_t pixel1 = info1.getPixelSize();
    const std::size_t pixel2 = info2.getPixelSize();
    const bool resample =
        info2.getWidth() != width || info2.getHeight() != height || info2.getDepth() != depth;
    const float xs = static_cast<float>(info2.getWidth()) / width;
    const float ys = static_cast<float>(info2.getHeight()) / height;
    const float zs = static_cast<float>(info2.getDepth()) / depth;

    // Byte offset of each column's alpha pixel within its row, when resampling.
    std::vector<std::size_t> alphaColumn;
    if (resample) {
        alphaColumn.resize(width);
        for (unsigned int x = 0; x < width; ++x)
            alphaColumn[x] = static_cast<unsigned int>(x * xs) * pixel2;
    }
    const std::size_t* column = resample ? alphaColumn.data() : nullptr;
    const WordTables tables(reads);

    unsigned char* out = mData;
    for (unsigned int z = 0; z < depth; ++z) {
        unsigned int sz = resample ? static_cast<unsigned int>(z * zs) : z;
        for (unsigned int y = 0; y < height; ++y) {
            unsigned int sy = resample ? static_cast<unsigned int>(y * ys) : y;
            const unsigned char* row1 = data1 + (static_cast<std::size_t>(z) * height + y) * width * pixel1;
            const unsigned char* row2 =
                data2 + (static_cast<std::size_t>(sz) * info2.getHeight() + sy) * info2.getWidth() * pixel2;
            if (!alphaSource)
                row2 = row1;
            switch (pixel1) {
            case 3:
                composeRowFor<3>(row1, row2, column, width, pixel1, pixel2, tables, out);
                break;
            case 4:
                composeRowFor<4>(row1, row2, column, width, pixel1, pixel2, tables, out);
                break;
            default:
                composeRowFor<0>(row1, row2, column, width, pixel1, pixel2, tables, out);
                break;
            }
            out += std::size_t(width) * 4;
        }
    }
    return true;
}

void TextureProxy::composePixels(const TextureSource& source, const TextureSource* alphaSource, float scale,
                                 float bias, unsigned int alphaChannel) {
    const TextureInfo& info1 = source.getTextureInfo();
    const TextureInfo& info2 = alphaSource ? alphaSource->getTextureInfo() : info1;
    const bool resample = info2.getWidth() != info1.getWidth() || info2.getHeight() != info1.getHeight() ||
                          info2.getDepth() != info1.getDepth();
    const bool indexed = info1.getColorFormat() == Color::ColorIndex;
    const float xs = static_cast<float>(info2.getWidth()) / info1.getWidth();
    const float ys = static_cast<float>(info2.getHeight()) / info1.getHeight();
    const float zs = static_cast<float>(info2.getDepth()) / info1.getDepth();

    unsigned char* out = mData;
    for (unsigned int z = 0; z < info1.getDepth(); ++z) {
        for (unsigned int y = 0; y < info1.getHeight(); ++y) {
            for (unsigned int x = 0; x < info1.getWidth(); ++x, out += 4) {
                Color color = info1.getPixelColor(source.getPixel(x, y, z));
                if (indexed)
                    color = Color(color.a, color.a, color.a, 1.0f);
                if (alphaSource) {
                    unsigned int sx = x, sy = y, sz = z;
                    if (resample) {
                        sx = static_cast<unsigned int>(x * xs);
                        sy = static_cast<unsigned int>(y * ys);
                        sz = static_cast<unsigned int>(z * zs);
                    }
                    Color second = info2.getPixelColor(alphaSource->getPixel(sx, sy, sz));
                    switch (alphaChannel) {
                    case 0:
                        color.a = second.r;
                        break;
                    case 1:
                        color.a = second.g;
                        break;
                    case 2:
                        color.a = second.b;
                        break;
                    case 3:
                        color.a = second.a;
                        break;
                    default:
                        color.a = 0.0f;
                        break;
                    }
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
