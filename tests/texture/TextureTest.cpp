#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "core/FileNameMapper.h"
#include "core/ResourceManager.h"
#include "foundation/CowMemPtr.h"
#include "support/EngineClock.h"
#include "texture/Texture2D.h"
#include "texture/TextureData.h"
#include "texture/TextureInfo.h"
#include "texture/TextureManager.h"

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

namespace {

typedef std::vector<std::string> Calls;

Dorvan::SharedPtr<TextureSource> onePixel() {
    TextureInfo info(1, 1, 1, DataType::UnsignedByte, Color::Luminance);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(1);
    return Dorvan::SharedPtr<TextureSource>(new TextureData(info, pixels));
}

// A source loader that accepts one file type and records what it is asked.
class RecordingSourceLoader : public TextureSourceLoader {
public:
    RecordingSourceLoader(const std::string& name, const std::string& type, bool succeeds, Calls* calls)
        : mName(name), mType(type), mSucceeds(succeeds), mCalls(calls) {}

    bool isInitialized() const override { return mInitialized; }
    bool initialize() override {
        ++mInitializeCalls;
        mInitialized = true;
        return true;
    }
    bool shutdown() override { return true; }

    bool canLoad(const NameMapper::ResourceInfo& resource, const TextureInfo&) override {
        return accepts("canLoadAs", resource);
    }
    bool canLoad(const NameMapper::ResourceInfo& resource) override { return accepts("canLoad", resource); }
    bool canConvert(const TextureInfo& info, bool flag) override {
        mCalls->push_back(mName + ".canConvert");
        return flag && info.getChannels() == 4;
    }
    Dorvan::SharedPtr<TextureSource> load(const NameMapper::ResourceInfo& resource,
                                          const TextureInfo&) override {
        return result("loadAs", resource);
    }
    Dorvan::SharedPtr<TextureSource> load(const NameMapper::ResourceInfo& resource) override {
        mLastFile = resource.mFileName;
        return result("load", resource);
    }
    Dorvan::SharedPtr<TextureSource> convert(Dorvan::SharedPtr<TextureSource> source, const TextureInfo&,
                                             bool) override {
        mCalls->push_back(mName + ".convert");
        return source;
    }

    std::string mName, mType;
    bool mSucceeds;
    Calls* mCalls;
    bool mInitialized = false;
    int mInitializeCalls = 0;
    std::string mLastFile;

private:
    bool accepts(const std::string& what, const NameMapper::ResourceInfo& resource) {
        mCalls->push_back(mName + "." + what);
        return resource.mFileType == mType;
    }
    Dorvan::SharedPtr<TextureSource> result(const std::string& what, const NameMapper::ResourceInfo&) {
        mCalls->push_back(mName + "." + what);
        return mSucceeds ? onePixel() : Dorvan::SharedPtr<TextureSource>();
    }
};

// A whole-texture loader for 2D textures of one file type.
class Texture2DLoader : public TextureLoader {
public:
    bool isInitialized() const override { return true; }
    bool initialize() override { return true; }
    bool shutdown() override { return true; }
    bool canLoad1D(const NameMapper::ResourceInfo&) override { return false; }
    bool canLoad2D(const NameMapper::ResourceInfo& resource) override { return resource.mFileType == "tex"; }
    bool canLoad3D(const NameMapper::ResourceInfo&) override { return false; }
    bool canLoadCubeMap(const NameMapper::ResourceInfo&) override { return false; }
    Dorvan::SharedPtr<Texture1D> loadTexture1D(const NameMapper::ResourceInfo&) override {
        return Dorvan::SharedPtr<Texture1D>();
    }
    Dorvan::SharedPtr<Texture2D> loadTexture2D(const NameMapper::ResourceInfo&) override {
        ++mLoads;
        return Dorvan::SharedPtr<Texture2D>(new Texture2D(onePixel()));
    }
    Dorvan::SharedPtr<Texture3D> loadTexture3D(const NameMapper::ResourceInfo&) override {
        return Dorvan::SharedPtr<Texture3D>();
    }
    Dorvan::SharedPtr<CubeMap> loadCubeMap(const NameMapper::ResourceInfo&) override {
        return Dorvan::SharedPtr<CubeMap>();
    }
    int mLoads = 0;
};

Dorvan::SharedPtr<NameMapper> textures() {
    return Dorvan::SharedPtr<NameMapper>(new FileNameMapper(".\\textures"));
}

}  // namespace

TEST(TextureManagerTest, SourcesAreCachedByNameAndSharedByEveryRequest) {
    TextureManager manager;
    Calls calls;
    RecordingSourceLoader loader("devil", "png", true, &calls);
    manager.registerTextureSourceLoader(loader);
    EXPECT_TRUE(manager.getTextureSource("grass.png").isNull());  // no mapper yet
    EXPECT_TRUE(calls.empty());

    manager.setTextureSourceNameMapper(textures());
    Dorvan::SharedPtr<TextureSource> grass = manager.getTextureSource("terrain/grass.png");
    ASSERT_FALSE(grass.isNull());
    EXPECT_EQ(".\\textures\\terrain\\grass.png", loader.mLastFile);
    EXPECT_EQ(grass.get(), manager.getTextureSource("terrain/grass.png").get());
    EXPECT_EQ((Calls{"devil.canLoad", "devil.load"}), calls);
}

TEST(TextureManagerTest, LoadersAreAskedInOrderAndTheFirstThatAcceptsDecidesEvenIfItFails) {
    TextureManager manager;
    manager.setTextureSourceNameMapper(textures());
    Calls calls;
    RecordingSourceLoader jpegs("jpegs", "jpg", true, &calls);
    RecordingSourceLoader failing("failing", "png", false, &calls);
    RecordingSourceLoader later("later", "png", true, &calls);
    manager.registerTextureSourceLoader(jpegs);
    manager.registerTextureSourceLoader(failing);
    manager.registerTextureSourceLoader(later);

    EXPECT_TRUE(manager.getTextureSource("missing.png").isNull());
    EXPECT_EQ((Calls{"jpegs.canLoad", "failing.canLoad", "failing.load"}), calls);
    // The failure is cached: no loader is asked again.
    calls.clear();
    EXPECT_TRUE(manager.getTextureSource("missing.png").isNull());
    EXPECT_TRUE(calls.empty());

    // No loader for the type: nothing is cached and the next request asks again.
    EXPECT_TRUE(manager.getTextureSource("sky.tga").isNull());
    EXPECT_TRUE(manager.getTextureSource("sky.tga").isNull());
    EXPECT_EQ(6u, calls.size());

    // A registration replaces a failed name.
    Dorvan::SharedPtr<TextureSource> made = onePixel();
    manager.registerTextureSource("missing.png", made);
    EXPECT_EQ(made.get(), manager.getTextureSource("missing.png").get());
}

TEST(TextureManagerTest, SourcesInAGivenDescriptionAreNeverCached) {
    TextureManager manager;
    Calls calls;
    RecordingSourceLoader loader("devil", "png", true, &calls);
    manager.registerTextureSourceLoader(loader);
    TextureInfo rgba;
    rgba.setColorFormat(Color::Rgba);
    EXPECT_TRUE(manager.getTextureSource("a.png", rgba).isNull());  // no mapper
    manager.setTextureSourceNameMapper(textures());
    Dorvan::SharedPtr<TextureSource> first = manager.getTextureSource("a.png", rgba);
    Dorvan::SharedPtr<TextureSource> second = manager.getTextureSource("a.png", rgba);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ((Calls{"devil.canLoadAs", "devil.loadAs", "devil.canLoadAs", "devil.loadAs"}), calls);
    // The plain cache stayed empty.
    calls.clear();
    manager.getTextureSource("a.png");
    EXPECT_EQ((Calls{"devil.canLoad", "devil.load"}), calls);
}

TEST(TextureManagerTest, ConversionGoesToTheFirstLoaderThatCan) {
    TextureManager manager;
    Calls calls;
    RecordingSourceLoader loader("devil", "png", true, &calls);
    Dorvan::SharedPtr<TextureSource> source = onePixel();
    TextureInfo rgba;
    rgba.setColorFormat(Color::Rgba);
    EXPECT_TRUE(manager.getTextureProxy(source, rgba, true).isNull());
    manager.registerTextureSourceLoader(loader);
    EXPECT_TRUE(manager.getTextureProxy(source, rgba, false).isNull());
    EXPECT_EQ(source.get(), manager.getTextureProxy(source, rgba, true).get());
    EXPECT_EQ((Calls{"devil.canConvert", "devil.canConvert", "devil.convert"}), calls);
}

TEST(TextureManagerTest, TexturesByNameFromRegistrationOrLoader) {
    TextureManager manager;
    EXPECT_TRUE(manager.getTexture2D("a").isNull());
    EXPECT_TRUE(manager.getTexture1D("a").isNull());
    EXPECT_TRUE(manager.getTexture3D("a").isNull());
    EXPECT_TRUE(manager.getCubeMap("a").isNull());

    Dorvan::SharedPtr<Texture2D> registered(new Texture2D());
    manager.registerTexture2D("a", registered);
    EXPECT_EQ(registered.get(), manager.getTexture2D("a").get());

    Texture2DLoader loader;
    EXPECT_EQ(0u, manager.registerTextureLoader(loader));
    EXPECT_TRUE(manager.getTexture2D("wall.tex").isNull());  // no texture mapper
    manager.setTextureNameMapper(textures());
    EXPECT_EQ(textures()->getResourceInfo("x").mFileName,
              manager.getTextureNameMapper()->getResourceInfo("x").mFileName);
    Dorvan::SharedPtr<Texture2D> wall = manager.getTexture2D("wall.tex");
    ASSERT_FALSE(wall.isNull());
    EXPECT_EQ(wall.get(), manager.getTexture2D("wall.tex").get());
    EXPECT_EQ(1, loader.mLoads);
    EXPECT_TRUE(manager.getTexture3D("wall.tex").isNull());
}
