#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "foundation/CowMemPtr.h"
#include "support/EngineClock.h"
#include "texture/TextureData.h"
#include "texture/TextureProxy.h"

using namespace Velun;

namespace {

typedef Dorvan::SharedPtr<TextureSource> Source;

// Pixels from bytes, in the given format (with two channels if None); the block is as long
// as `bytes`, which may be shorter than the description.
Source image(unsigned int width, unsigned int height, Color::Format format,
             const std::vector<unsigned char>& bytes) {
    TextureInfo info(width, height, 1, DataType::UnsignedByte, format);
    if (format == Color::None)
        info.setChannels(2);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(bytes.size());
    std::memcpy(pixels.get(), bytes.data(), bytes.size());
    return Source(new TextureData(info, pixels));
}

// The same pixels offered only one at a time, as a source that makes them on demand
// would: no block to read rows from, so the proxy takes its per-pixel path.
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

}  // namespace

TEST(TextureProxyTest, SolidColourIsRgbaBytes) {
    TextureProxy proxy(4, 2, Color(1.0f, 0.0f, 0.0f, 0.5f));
    EXPECT_EQ(TextureInfo(4, 2, 1, DataType::UnsignedByte, Color::Rgba), proxy.getTextureInfo());
    const unsigned char* data = static_cast<const unsigned char*>(proxy.getTextureData());
    for (unsigned int i = 0; i < 8; ++i)
        EXPECT_EQ((Bytes{255, 0, 0, 127}), Bytes(data + 4 * i, data + 4 * i + 4));
    EXPECT_EQ(nullptr, proxy.getPixel(4, 0, 0));
}

// Colours are scaled and biased, truncated and clamped to bytes; alpha is not; alpha comes
// from a channel of a second source of any size, one-channel sources read as grey.
TEST(TextureProxyTest, PixelsOfColourAndAlphaSources) {
    const Source rgb = image(2, 2, Color::Rgb, {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120});
    std::vector<unsigned char> ramp(16);
    for (unsigned int i = 0; i < 16; ++i)
        ramp[i] = static_cast<unsigned char>(16 * (i / 4) + i % 4);
    const Source mask = image(4, 4, Color::ColorIndex, ramp), grey = image(4, 4, Color::Luminance, ramp);
    const Source tall = image(2, 8, Color::Luminance, ramp);
    const Source dark = image(2, 2, Color::Rgba, {0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 9});
    const Source tiny = image(1, 1, Color::Rgb, {200, 17, 51}),
                 bright = image(1, 1, Color::Rgb, {255, 64, 0});
    const Source rgba = image(1, 1, Color::Rgba, {100, 34, 254, 51}),
                 pair = image(1, 1, Color::None, {200, 34});
    const Source lum = image(2, 1, Color::Luminance, {128, 17}),
                 index = image(2, 1, Color::ColorIndex, {128, 17});
    // A block shorter than its description reads black beyond its end.
    const Source shortBlock = image(2, 2, Color::Rgb, {200, 200, 200});
    const struct {
        const char* name;
        Source colour, alpha;
        float scale, bias;
        unsigned int channel, x, y;
        Bytes expected;
    } cases[] = {
        // 64 / 255 * 2 - 0.25 gives 64.25 bytes; the others leave 0 to 255.
        {"scaled and clamped", bright, {}, 2.0f, -0.25f, 3, 0, 0, {255, 64, 0, 255}},
        // 100 / 255 * 0.5 + 0.25 gives 113.75, truncated; alpha passes through.
        {"biased", rgba, {}, 0.5f, 0.25f, 3, 0, 0, {113, 80, 190, 51}},
        // Pixel (x, y) takes its alpha from (2x, 2y) of the larger mask.
        {"mask 1 0", rgb, mask, 1.0f, 0.0f, 3, 1, 0, {40, 50, 60, 2}},
        {"mask 0 1", rgb, mask, 1.0f, 0.0f, 3, 0, 1, {70, 80, 90, 32}},
        {"mask 1 1", rgb, mask, 1.0f, 0.0f, 3, 1, 1, {100, 110, 120, 34}},
        {"tall mask", rgb, tall, 1.0f, 0.0f, 0, 1, 1, {100, 110, 120, 33}},
        {"grey mask, green", rgb, grey, 1.0f, 0.0f, 1, 1, 1, {100, 110, 120, 34}},
        {"grey mask, alpha", rgb, grey, 1.0f, 0.0f, 3, 1, 1, {100, 110, 120, 255}},
        {"grey mask, no channel", rgb, grey, 1.0f, 0.0f, 7, 1, 1, {100, 110, 120, 0}},
        // A smaller alpha source repeats its pixels.
        {"small mask, red", dark, tiny, 1.0f, 0.0f, 0, 1, 0, {0, 0, 0, 200}},
        {"small mask, blue", dark, tiny, 1.0f, 0.0f, 2, 1, 1, {0, 0, 0, 51}},
        {"luminance", lum, {}, 1.0f, 0.0f, 3, 1, 0, {17, 17, 17, 255}},
        {"index", index, {}, 1.0f, 0.0f, 3, 1, 0, {17, 17, 17, 255}},
        {"luminance alpha", pair, {}, 1.0f, 0.0f, 3, 0, 0, {200, 200, 200, 34}},
        {"short block, start", shortBlock, {}, 1.0f, 0.0f, 3, 0, 0, {200, 200, 200, 255}},
        {"short block, end", shortBlock, {}, 1.0f, 0.0f, 3, 1, 1, {0, 0, 0, 255}},
    };
    for (const auto& c : cases) {
        for (bool block : {true, false}) {
            SCOPED_TRACE(std::string(c.name) + (block ? " from the block" : " pixel by pixel"));
            auto offer = [block](Source s) { return block || !s ? s : Source(new PixelByPixel(s)); };
            TextureProxy proxy(offer(c.colour), offer(c.alpha), c.scale, c.bias, c.channel);
            EXPECT_EQ(c.colour->getTextureInfo().getWidth(), proxy.getTextureInfo().getWidth());
            EXPECT_EQ(c.expected, pixel(proxy, c.x, c.y));
        }
    }
}

// The canvas row after row, a digit per pixel whose four bytes are that value, 'x' otherwise.
std::string digits(const TextureProxy& canvas) {
    std::string rows;
    for (unsigned int y = 0; y < 4; ++y) {
        for (unsigned int x = 0; x < 4; ++x) {
            Bytes p = pixel(canvas, x, y);
            rows += p == Bytes(4, p[0]) ? static_cast<char>('0' + p[0]) : 'x';
        }
        rows += y < 3 ? "/" : "";
    }
    return rows;
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
    EXPECT_EQ("0120/0340/0000/0000", digits(canvas));
    // Only the part inside the canvas is copied, and only the part inside the source.
    EXPECT_TRUE(canvas.copyRect(patch, 3, 3, 0, 0, 0, 0, 2, 2, 1));
    EXPECT_TRUE(canvas.copyRect(patch, 0, 2, 0, 1, 1, 0, 5, 5, 1));
    EXPECT_EQ("0120/0340/4000/0001", digits(canvas));

    // Nothing left after clipping: refused, no stamp.
    clock.setTime(900);
    EXPECT_FALSE(canvas.copyRect(patch, 4, 0, 0, 0, 0, 0, 1, 1, 1));
    EXPECT_FALSE(canvas.copyRect(patch, 0, 0, 0, 2, 0, 0, 1, 1, 1));
    EXPECT_FALSE(canvas.copyRect(patch, 0, 0, 0, 0, 0, 0, 0, 1, 1));
    EXPECT_FALSE(canvas.copyRect(Source(), 0, 0, 0, 0, 0, 0, 1, 1, 1));
    EXPECT_FALSE(canvas.hasChanged(900));
}
