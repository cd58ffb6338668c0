#include <gtest/gtest.h>

#include <cstring>

#include "core/ResourceManager.h"
#include "foundation/CowMemPtr.h"
#include "support/EngineClock.h"
#include "texture/Texture2D.h"
#include "texture/TextureData.h"
#include "texture/TextureManager.h"

using namespace Velun;

namespace {

Dorvan::SharedPtr<TextureSource> makeRgb(unsigned int width, unsigned int height) {
    TextureInfo info(width, height, 1, DataType::UnsignedByte, Color::Rgb);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(info.getMemSize());
    unsigned char* p = static_cast<unsigned char*>(pixels.get());
    for (unsigned int i = 0; i < info.getMemSize(); ++i)
        p[i] = static_cast<unsigned char>(i);
    return Dorvan::SharedPtr<TextureSource>(new TextureData(info, pixels));
}

}  // namespace

TEST(TextureTest, FiltersAreNormalised) {
    Texture2D texture;
    texture.setMagFilter(Texture::Trilinear);
    EXPECT_EQ(Texture::Linear, texture.getMagFilter());
    texture.setMagFilter(Texture::Nearest);
    EXPECT_EQ(Texture::Nearest, texture.getMagFilter());

    texture.setMipMapFilter(Texture::Nearest, Texture::Nearest);
    texture.setMinFilter(Texture::Trilinear);
    EXPECT_EQ(Texture::MipMap, texture.getMinFilter());
    EXPECT_EQ(Texture::Linear, texture.getMipMapChooseFilter());
    EXPECT_EQ(Texture::Linear, texture.getMipMapFilter());
    texture.setMinFilter(Texture::Bilinear);
    EXPECT_EQ(Texture::Linear, texture.getMinFilter());

    texture.setMipMapFilter(Texture::Trilinear, Texture::Nearest);
    EXPECT_EQ(1, texture.getMipMapChooseFilter());
    EXPECT_EQ(0, texture.getMipMapFilter());

    texture.setAllFilters(Texture::MipMap);
    EXPECT_EQ(Texture::MipMap, texture.getMinFilter());
    EXPECT_EQ(Texture::Linear, texture.getMagFilter());
}

TEST(TextureTest, ReplacingTheSourceStampsTheTexture) {
    VelunTest::EngineClock clock;
    clock.setTime(2000);
    Dorvan::SharedPtr<TextureSource> image = makeRgb(2, 2);
    Texture2D texture(image);
    EXPECT_EQ(image.get(), texture.getTextureSource(3, 7).get());
    EXPECT_FALSE(texture.hasChanged(1));

    texture.setTextureSource(makeRgb(1, 1));
    EXPECT_TRUE(texture.hasChanged(2000));
    EXPECT_FALSE(texture.hasChanged(2001));
}

TEST(TextureTest, TextureOutlivesTheEngine) {
    Texture2D* texture;
    {
        VelunTest::EngineClock engine;
        texture = new Texture2D();
    }
    delete texture;
}

TEST(TextureDataTest, PixelsAddressedRowAfterRowAndRejectedAtTheSize) {
    Dorvan::SharedPtr<TextureSource> image = makeRgb(3, 2);
    const unsigned char* base = static_cast<const unsigned char*>(image->getTextureData());
    EXPECT_EQ(base, image->getPixel(0, 0, 0));
    EXPECT_EQ(base + 3 * 4, image->getPixel(1, 1, 0));
    EXPECT_EQ(nullptr, image->getPixel(3, 0, 0));
    EXPECT_EQ(nullptr, image->getPixel(0, 2, 0));
    EXPECT_EQ(nullptr, image->getPixel(0, 0, 1));
    EXPECT_FALSE(image->hasChanged(0));
    unsigned char target[4];
    EXPECT_FALSE(image->copyData(0, 0, 0, 1, 1, 1, target));
}
