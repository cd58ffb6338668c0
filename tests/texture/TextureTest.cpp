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

TEST(TextureTest, FreshTexture2DDefaults) {
    Texture2D texture;
    EXPECT_EQ(Texture::Type2D, texture.getTextureType());
    EXPECT_EQ(2u, texture.getChannels());
    EXPECT_EQ(1u, texture.getTexCount());
    EXPECT_EQ(Texture::Modulate, texture.getTexMode());
    EXPECT_EQ(Color(0, 0, 0, 1), texture.getBorderColor());
    EXPECT_EQ(Color(0, 0, 0, 1), texture.getConstantColor());
    EXPECT_EQ(Texture::Linear, texture.getMagFilter());
    EXPECT_EQ(Texture::Linear, texture.getMinFilter());
    EXPECT_FALSE(texture.doGenerateMipMaps());
    EXPECT_EQ(0u, texture.getMinMipMapLevel());
    EXPECT_EQ(5u, texture.getMaxMipMapLevel());
    EXPECT_EQ(Texture::Repeat, texture.getWrapMode(0, 0));
    EXPECT_EQ(Texture::Repeat, texture.getWrapMode(1, 0));
    EXPECT_EQ(Texture::Repeat, texture.getWrapMode(2, 0));
    EXPECT_TRUE(texture.getTextureSource(0, 0).isNull());
    EXPECT_TRUE(texture.hasChanged(0));
}

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

TEST(TextureTest, WrapModesOutOfRangeAreIgnored) {
    Texture2D texture;
    texture.setWrapMode(Texture::ClampToEdge, 1, 0);
    texture.setWrapMode(Texture::Clamp, 2, 0);
    texture.setWrapMode(Texture::Clamp, 0, 1);
    EXPECT_EQ(Texture::Repeat, texture.getWrapMode(0, 0));
    EXPECT_EQ(Texture::ClampToEdge, texture.getWrapMode(1, 0));
    EXPECT_EQ(Texture::Repeat, texture.getWrapMode(2, 0));
    texture.setAllWrapModes(Texture::MirroredRepeat);
    EXPECT_EQ(Texture::MirroredRepeat, texture.getWrapMode(0, 0));
    EXPECT_EQ(Texture::MirroredRepeat, texture.getWrapMode(1, 0));

    texture.setMipMapLevels(1, 3);
    texture.setGenerateMipMaps(true);
    texture.setTexMode(Texture::ModulateConstant);
    texture.setConstantColor(Color(0.5f, 0.5f, 0.5f, 1.0f));
    EXPECT_EQ(3u, texture.getMaxMipMapLevel());
    EXPECT_TRUE(texture.doGenerateMipMaps());
    EXPECT_EQ(Texture::ModulateConstant, texture.getTexMode());
    EXPECT_EQ(Color(0.5f, 0.5f, 0.5f, 1.0f), texture.getConstantColor());
}

TEST(TextureTest, IdsComeFromTheEnginesTextureManager) {
    VelunTest::EngineClock engine;
    TextureManager& manager = VelunCore::getSingleton().getResourceManager().getTextureManager();
    Texture2D first;
    Texture2D second;
    EXPECT_NE(0u, first.getTextureId());
    EXPECT_EQ(first.getTextureId() + 1, second.getTextureId());
    unsigned int next = manager.createTextureId();
    manager.returnTextureId(next);
    EXPECT_EQ(next + 1, manager.createTextureId());
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
