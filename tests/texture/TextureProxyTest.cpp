#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "foundation/CowMemPtr.h"
#include "support/EngineClock.h"
#include "texture/TextureData.h"
#include "texture/TextureProxy.h"

using namespace Velun;

namespace {

typedef Dorvan::SharedPtr<TextureSource> Source;

// Pixels from bytes, in the given format.
Source image(unsigned int width, unsigned int height, Color::Format format,
             const std::vector<unsigned char>& bytes) {
    TextureInfo info(width, height, 1, DataType::UnsignedByte, format);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(info.getMemSize());
    std::memcpy(pixels.get(), bytes.data(), info.getMemSize());
    return Source(new TextureData(info, pixels));
}

// The same pixels offered only one at a time, as a source that makes them on demand
// would: no block to read rows from.
class PixelByPixel : public TextureSource {
public:
    explicit PixelByPixel(Source inner) : mInner(inner) {}
    const TextureInfo& getTextureInfo() const override { return mInner->getTextureInfo(); }
    bool hasChanged(std::int64_t) const override { return false; }
    const void* getTextureData() const override { return nullptr; }
    const void* getPixel(unsigned int x, unsigned int y, unsigned int z) const override {
        return mInner->getPixel(x, y, z);
    }
    bool copyData(unsigned int, unsigned int, unsigned int, unsigned int, unsigned int, unsigned int,
                  void*) const override {
        return false;
    }
    Source mInner;
};

std::vector<unsigned char> pixel(const TextureProxy& proxy, unsigned int x, unsigned int y) {
    const unsigned char* p = static_cast<const unsigned char*>(proxy.getPixel(x, y, 0));
    return p ? std::vector<unsigned char>(p, p + 4) : std::vector<unsigned char>();
}

typedef std::vector<unsigned char> Bytes;

class ValueProbe : public TextureProxy {
public:
    ValueProbe() : TextureProxy(1, 1, Color()) {}
    unsigned char value(float v, float scale, float bias) const { return getPixelValue(v, scale, bias); }
};

}  // namespace

TEST(TextureProxyTest, FloatsBecomeBytesByTruncation) {
    ValueProbe probe;
    EXPECT_EQ(255, probe.value(2.0f, 1.0f, 0.0f));
    EXPECT_EQ(0, probe.value(-1.0f, 1.0f, 0.0f));
    EXPECT_EQ(127, probe.value(0.5f, 0.5f, 0.25f));
    EXPECT_EQ(127, probe.value(0.5f, 1.0f, 0.0f));
}

TEST(TextureProxyTest, SolidColourIsRgbaBytes) {
    TextureProxy proxy(4, 2, Color(1.0f, 0.0f, 0.0f, 0.5f));
    const TextureInfo& info = proxy.getTextureInfo();
    EXPECT_EQ(32u, info.getMemSize());
    EXPECT_EQ(Color::Rgba, info.getColorFormat());
    EXPECT_EQ(DataType::UnsignedByte, info.getDataType());
    EXPECT_EQ(1u, info.getDepth());
    const unsigned char* data = static_cast<const unsigned char*>(proxy.getTextureData());
    for (unsigned int i = 0; i < 8; ++i)
        EXPECT_EQ((Bytes{255, 0, 0, 127}), Bytes(data + 4 * i, data + 4 * i + 4));
    EXPECT_EQ(nullptr, proxy.getPixel(4, 0, 0));
    EXPECT_FALSE(proxy.copyData(0, 0, 0, 1, 1, 1, nullptr));
}

TEST(TextureProxyTest, ColoursAreScaledAndBiasedButAlphaIsNot) {
    Source rgb = image(2, 2, Color::Rgb, {128, 64, 0, 128, 64, 0, 128, 64, 0, 128, 64, 0});
    TextureProxy proxy(rgb, Source(), 2.0f, 0.0f, 3);
    EXPECT_EQ(2u, proxy.getTextureInfo().getWidth());
    for (unsigned int y = 0; y < 2; ++y)
        for (unsigned int x = 0; x < 2; ++x)
            EXPECT_EQ((Bytes{255, 128, 0, 255}), pixel(proxy, x, y));

    Source rgba = image(1, 1, Color::Rgba, {100, 34, 254, 51});
    TextureProxy biased(rgba, Source(), 0.5f, 0.25f, 3);
    // 100 / 255 * 0.5 + 0.25 gives 113.75, truncated; alpha passes through.
    EXPECT_EQ((Bytes{113, 80, 190, 51}), pixel(biased, 0, 0));
}

TEST(TextureProxyTest, AlphaFromALargerOneChannelSource) {
    Source rgb = image(2, 2, Color::Rgb, {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120});
    std::vector<unsigned char> mask(16);
    for (unsigned int y = 0; y < 4; ++y)
        for (unsigned int x = 0; x < 4; ++x)
            mask[y * 4 + x] = static_cast<unsigned char>(16 * y + x);
    Source alpha = image(4, 4, Color::ColorIndex, mask);
    TextureProxy proxy(rgb, alpha, 1.0f, 0.0f, 3);
    // Pixel (x, y) takes its alpha from (2x, 2y) of the mask.
    EXPECT_EQ((Bytes{10, 20, 30, 0}), pixel(proxy, 0, 0));
    EXPECT_EQ((Bytes{40, 50, 60, 2}), pixel(proxy, 1, 0));
    EXPECT_EQ((Bytes{70, 80, 90, 32}), pixel(proxy, 0, 1));
    EXPECT_EQ((Bytes{100, 110, 120, 34}), pixel(proxy, 1, 1));

    // A luminance mask is grey: red, green and blue are its value, alpha is opaque.
    Source grey = image(4, 4, Color::Luminance, mask);
    EXPECT_EQ((Bytes{100, 110, 120, 34}), pixel(TextureProxy(rgb, grey, 1.0f, 0.0f, 1), 1, 1));
    EXPECT_EQ((Bytes{100, 110, 120, 255}), pixel(TextureProxy(rgb, grey, 1.0f, 0.0f, 3), 1, 1));
    EXPECT_EQ((Bytes{100, 110, 120, 0}), pixel(TextureProxy(rgb, grey, 1.0f, 0.0f, 7), 1, 1));
}

TEST(TextureProxyTest, AlphaFromASmallerSourceRepeatsItsPixels) {
    Source rgba = image(2, 2, Color::Rgba, {0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 9});
    Source alpha = image(1, 1, Color::Rgb, {200, 17, 51});
    TextureProxy red(rgba, alpha, 1.0f, 0.0f, 0);
    EXPECT_EQ(200, pixel(red, 0, 0)[3]);
    EXPECT_EQ(200, pixel(red, 1, 0)[3]);
    EXPECT_EQ(200, pixel(red, 1, 1)[3]);
    TextureProxy blue(rgba, alpha, 1.0f, 0.0f, 2);
    EXPECT_EQ(51, pixel(blue, 1, 1)[3]);
}

TEST(TextureProxyTest, OneChannelSourcesReadAsGrey) {
    Source luminance = image(2, 1, Color::Luminance, {128, 17});
    TextureProxy fromLuminance(luminance, Source(), 1.0f, 0.0f, 3);
    EXPECT_EQ((Bytes{128, 128, 128, 255}), pixel(fromLuminance, 0, 0));
    EXPECT_EQ((Bytes{17, 17, 17, 255}), pixel(fromLuminance, 1, 0));

    Source indexed = image(2, 1, Color::ColorIndex, {128, 17});
    TextureProxy fromIndex(indexed, Source(), 1.0f, 0.0f, 3);
    EXPECT_EQ((Bytes{128, 128, 128, 255}), pixel(fromIndex, 0, 0));
    EXPECT_EQ((Bytes{17, 17, 17, 255}), pixel(fromIndex, 1, 0));

    TextureInfo twoChannels;
    twoChannels.setDataType(DataType::UnsignedByte);
    twoChannels.setChannels(2);
    twoChannels.setWidth(1);
    twoChannels.setHeight(1);
    twoChannels.setDepth(1);
    Dorvan::CowMemPtr<void> bytes;
    bytes.alloc(2);
    static_cast<unsigned char*>(bytes.get())[0] = 200;
    static_cast<unsigned char*>(bytes.get())[1] = 34;
    TextureProxy fromLuminanceAlpha(Source(new TextureData(twoChannels, bytes)), Source(), 1.0f, 0.0f, 3);
    EXPECT_EQ((Bytes{200, 200, 200, 34}), pixel(fromLuminanceAlpha, 0, 0));
}

TEST(TextureProxyTest, CanvasCopiesClipAtTheEdgesAndStamp) {
    VelunTest::EngineClock clock;
    TextureProxy canvas(4, 4, Color(0.0f, 0.0f, 0.0f, 0.0f));
    EXPECT_TRUE(canvas.hasChanged(0));
    EXPECT_FALSE(canvas.hasChanged(1));

    Source patch = image(2, 2, Color::Rgba, {1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3, 4, 4, 4, 4});
    clock.setTime(700);
    EXPECT_TRUE(canvas.copyRect(patch, 1, 0, 0, 0, 0, 0, 2, 2, 1));
    EXPECT_TRUE(canvas.hasChanged(700));
    EXPECT_FALSE(canvas.hasChanged(701));
    EXPECT_EQ((Bytes{0, 0, 0, 0}), pixel(canvas, 0, 0));
    EXPECT_EQ((Bytes{1, 1, 1, 1}), pixel(canvas, 1, 0));
    EXPECT_EQ((Bytes{2, 2, 2, 2}), pixel(canvas, 2, 0));
    EXPECT_EQ((Bytes{4, 4, 4, 4}), pixel(canvas, 2, 1));
    EXPECT_EQ((Bytes{0, 0, 0, 0}), pixel(canvas, 3, 0));

    // Only the part inside the canvas is copied.
    clock.setTime(800);
    EXPECT_TRUE(canvas.copyRect(patch, 3, 3, 0, 0, 0, 0, 2, 2, 1));
    EXPECT_EQ((Bytes{1, 1, 1, 1}), pixel(canvas, 3, 3));
    EXPECT_EQ((Bytes{0, 0, 0, 0}), pixel(canvas, 3, 2));
    // And only the part inside the source.
    EXPECT_TRUE(canvas.copyRect(patch, 0, 2, 0, 1, 1, 0, 5, 5, 1));
    EXPECT_EQ((Bytes{4, 4, 4, 4}), pixel(canvas, 0, 2));
    EXPECT_EQ((Bytes{0, 0, 0, 0}), pixel(canvas, 1, 2));
    EXPECT_EQ((Bytes{0, 0, 0, 0}), pixel(canvas, 0, 3));

    // Nothing left after clipping: refused, no stamp.
    clock.setTime(900);
    EXPECT_FALSE(canvas.copyRect(patch, 4, 0, 0, 0, 0, 0, 1, 1, 1));
    EXPECT_FALSE(canvas.copyRect(patch, 0, 0, 0, 2, 0, 0, 1, 1, 1));
    EXPECT_FALSE(canvas.copyRect(patch, 0, 0, 0, 0, 0, 0, 0, 1, 1));
    EXPECT_FALSE(canvas.copyRect(Source(), 0, 0, 0, 0, 0, 0, 1, 1, 1));
    EXPECT_FALSE(canvas.hasChanged(900));
}

TEST(TextureProxyTest, BlockShorterThanItsDescriptionReadsBlackBeyondItsEnd) {
    TextureInfo info(2, 2, 1, DataType::UnsignedByte, Color::Rgb);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(3);
    std::memset(pixels.get(), 200, 3);
    TextureProxy proxy(Source(new TextureData(info, pixels)), Source(), 1.0f, 0.0f, 3);
    EXPECT_EQ((Bytes{200, 200, 200, 255}), pixel(proxy, 0, 0));
    EXPECT_EQ((Bytes{0, 0, 0, 255}), pixel(proxy, 1, 1));
}
