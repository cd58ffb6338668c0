#include <gtest/gtest.h>

#include "texture/TextureInfo.h"

using namespace Velun;

namespace {

void expectColor(const Color& expected, const Color& actual) {
    EXPECT_FLOAT_EQ(expected.r, actual.r);
    EXPECT_FLOAT_EQ(expected.g, actual.g);
    EXPECT_FLOAT_EQ(expected.b, actual.b);
    EXPECT_FLOAT_EQ(expected.a, actual.a);
}

TextureInfo bytes(unsigned int channels, Color::Format format = Color::None) {
    TextureInfo info;
    info.setDataType(DataType::UnsignedByte);
    info.setChannels(channels);
    if (format != Color::None)
        info.setColorFormat(format);
    return info;
}

}  // namespace

TEST(TextureInfoTest, SizeAndEquality) {
    TextureInfo a = bytes(4, Color::Rgba);
    a.setWidth(8);
    a.setHeight(4);
    a.setDepth(2);
    EXPECT_EQ(256u, a.getMemSize());
    EXPECT_EQ(4u, a.getPixelSize());
    EXPECT_EQ(a, TextureInfo(8, 4, 2, DataType::UnsignedByte, Color::Rgba));

    TextureInfo b = a;
    EXPECT_TRUE(a == b);
    b.setDepth(1);
    EXPECT_FALSE(a == b);
    b = a;
    b.setDataType(DataType::Float);
    EXPECT_EQ(1024u, b.getMemSize());
    EXPECT_TRUE(a != b);
}

TEST(TextureInfoTest, PixelColorsOfBytes) {
    // Bytes are scaled by multiplying with 1/255 as a float, not by dividing.
    const float half = 128 * 0.003921569f;
    const unsigned char rgba[] = {255, 0, 51, 102};
    expectColor(Color(1.0f, 0.0f, 0.2f, 0.4f), bytes(4, Color::Rgba).getPixelColor(rgba));
    expectColor(Color(1.0f, 0.0f, 0.2f, 1.0f), bytes(3, Color::Rgb).getPixelColor(rgba));

    const unsigned char luminanceAlpha[] = {255, 128};
    expectColor(Color(1.0f, 1.0f, 1.0f, half), bytes(2).getPixelColor(luminanceAlpha));

    const unsigned char one[] = {128};
    expectColor(Color(1.0f, 1.0f, 1.0f, half), bytes(1, Color::ColorIndex).getPixelColor(one));
    expectColor(Color(half, half, half, 1.0f), bytes(1, Color::Luminance).getPixelColor(one));
}

TEST(TextureInfoTest, PixelColorsOfFloatsAndOtherTypes) {
    TextureInfo info;
    info.setDataType(DataType::Float);
    info.setChannels(2);
    const float values[] = {0.25f, 0.75f, 0.5f, 0.125f};
    expectColor(Color(0.25f, 0.25f, 0.25f, 0.75f), info.getPixelColor(values));
    info.setColorFormat(Color::Rgba);
    expectColor(Color(0.25f, 0.75f, 0.5f, 0.125f), info.getPixelColor(values));
    info.setColorFormat(Color::Luminance);
    expectColor(Color(0.25f, 0.25f, 0.25f, 1.0f), info.getPixelColor(values));

    info.setDataType(DataType::UnsignedShort);
    expectColor(Color(0.0f, 0.0f, 0.0f, 1.0f), info.getPixelColor(values));
    expectColor(Color(0.0f, 0.0f, 0.0f, 1.0f), info.getPixelColor(nullptr));
}
