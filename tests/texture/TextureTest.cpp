#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/FileNameMapper.h"
#include "foundation/CowMemPtr.h"
#include "support/EngineClock.h"
#include "texture/Texture2D.h"
#include "texture/TextureData.h"
#include "texture/TextureManager.h"

using namespace Velun;
typedef Dorvan::SharedPtr<TextureSource> Source;

namespace {

// An image of zero bytes in its own block.
Source makeImage(unsigned int width, unsigned int height, Color::Format format = Color::Rgb) {
    TextureInfo info(width, height, 1, DataType::UnsignedByte, format);
    Dorvan::CowMemPtr<void> pixels;
    pixels.alloc(info.getMemSize());
    return Source(new TextureData(info, pixels));
}

typedef std::vector<std::string> Calls;
typedef NameMapper::ResourceInfo Resource;

Source onePixel() { return makeImage(1, 1, Color::Luminance); }

// A source loader that accepts one file type and records what it is asked.
class RecordingSourceLoader : public TextureSourceLoader {
public:
    RecordingSourceLoader(const std::string& name, const std::string& type, bool succeeds, Calls* calls)
        : mName(name), mType(type), mSucceeds(succeeds), mCalls(calls) {}

    bool isInitialized() const override { return true; }
    bool initialize() override { return true; }
    bool shutdown() override { return true; }
    bool canLoad(const Resource& r, const TextureInfo&) override { return note("canLoadAs", r) == mType; }
    bool canLoad(const Resource& r) override { return note("canLoad", r) == mType; }
    bool canConvert(const TextureInfo& info, bool flag) override {
        mCalls->push_back(mName + ".canConvert");
        return flag && info.getChannels() == 4;
    }
    Source load(const Resource& r, const TextureInfo&) override { return made("loadAs", r); }
    Source load(const Resource& r) override { return made("load", r); }
    Source convert(Source source, const TextureInfo&, bool) override {
        mCalls->push_back(mName + ".convert");
        return source;
    }

    std::string mName, mType, mLastFile;
    bool mSucceeds;
    Calls* mCalls;

private:
    // Records the call and the file; gives the file's type.
    std::string note(const std::string& what, const Resource& r) {
        mCalls->push_back(mName + "." + what);
        mLastFile = r.mFileName;
        return r.mFileType;
    }
    Source made(const std::string& what, const Resource& r) {
        note(what, r);
        return mSucceeds ? onePixel() : Source();
    }
};

// A whole-texture loader for 2D textures of one file type.
class Texture2DLoader : public TextureLoader {
public:
    bool isInitialized() const override { return true; }
    bool initialize() override { return true; }
    bool shutdown() override { return true; }
    bool canLoad1D(const Resource&) override { return false; }
    bool canLoad2D(const Resource& resource) override { return resource.mFileType == "tex"; }
    bool canLoad3D(const Resource&) override { return false; }
    bool canLoadCubeMap(const Resource&) override { return false; }
    Dorvan::SharedPtr<Texture1D> loadTexture1D(const Resource&) override { return {}; }
    Dorvan::SharedPtr<Texture2D> loadTexture2D(const Resource&) override {
        ++mLoads;
        return Dorvan::SharedPtr<Texture2D>(new Texture2D(onePixel()));
    }
    Dorvan::SharedPtr<Texture3D> loadTexture3D(const Resource&) override { return {}; }
    Dorvan::SharedPtr<CubeMap> loadCubeMap(const Resource&) override { return {}; }
    int mLoads = 0;
};

Dorvan::SharedPtr<NameMapper> textures() {
    return Dorvan::SharedPtr<NameMapper>(new FileNameMapper(".\\textures"));
}

// A manager without loaders or name mappers yet; a recording loader for PNG files.
class TextureManagerTest : public ::testing::Test {
protected:
    TextureManager manager;
    Calls calls;
    RecordingSourceLoader devil{"devil", "png", true, &calls};
    const TextureInfo rgba{1, 1, 1, DataType::UnsignedByte, Color::Rgba};
};

}  // namespace

TEST(TextureInfoTest, PixelColorsOfEveryLayout) {
    // Bytes are scaled by multiplying with 1/255 as a float, not by dividing.
    const float k = 0.003921569f, half = 128 * k;
    const unsigned char rgba[] = {255, 0, 51, 102}, luminanceAlpha[] = {255, 128}, one[] = {128};
    const float values[] = {0.25f, 0.75f, 0.5f, 0.125f};
    const struct {
        DataType::Type type;
        unsigned int channels;  // 0: from the format
        Color::Format format;
        const void* pixel;
        Color expected;
    } cases[] = {
        {DataType::UnsignedByte, 4, Color::Rgba, rgba, Color(1.0f, 0.0f, 51 * k, 102 * k)},
        {DataType::UnsignedByte, 3, Color::Rgb, rgba, Color(1.0f, 0.0f, 51 * k, 1.0f)},
        {DataType::UnsignedByte, 2, Color::None, luminanceAlpha, Color(1.0f, 1.0f, 1.0f, half)},
        {DataType::UnsignedByte, 1, Color::ColorIndex, one, Color(1.0f, 1.0f, 1.0f, half)},
        {DataType::UnsignedByte, 1, Color::Luminance, one, Color(half, half, half, 1.0f)},
        {DataType::Float, 2, Color::None, values, Color(0.25f, 0.25f, 0.25f, 0.75f)},
        {DataType::Float, 0, Color::Rgba, values, Color(0.25f, 0.75f, 0.5f, 0.125f)},
        {DataType::Float, 0, Color::Luminance, values, Color(0.25f, 0.25f, 0.25f, 1.0f)},
        {DataType::UnsignedShort, 0, Color::Luminance, values, Color(0.0f, 0.0f, 0.0f, 1.0f)},
        {DataType::UnsignedShort, 0, Color::Luminance, nullptr, Color(0.0f, 0.0f, 0.0f, 1.0f)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.type << " " << c.channels << " " << c.format);
        TextureInfo info;
        info.setDataType(c.type);
        if (c.channels)
            info.setChannels(c.channels);
        if (c.format != Color::None)
            info.setColorFormat(c.format);
        EXPECT_EQ(c.expected, info.getPixelColor(c.pixel));
    }
}

TEST(TextureTest, FiltersAreNormalised) {
    Texture2D texture;
    texture.setMagFilter(Texture::Trilinear);
    EXPECT_EQ(Texture::Linear, texture.getMagFilter());
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

// The texture is deleted after the engine has gone.
TEST(TextureTest, ReplacingTheSourceStampsTheTexture) {
    Texture2D* texture;
    {
        VelunTest::EngineClock clock;
        clock.setTime(2000);
        Source image = makeImage(2, 2);
        texture = new Texture2D(image);
        EXPECT_EQ(image.get(), texture->getTextureSource(3, 7).get());
        EXPECT_FALSE(texture->hasChanged(1));
        texture->setTextureSource(makeImage(1, 1));
        EXPECT_TRUE(texture->hasChanged(2000));
        EXPECT_FALSE(texture->hasChanged(2001));
    }
    delete texture;
}

TEST(TextureDataTest, PixelsAddressedRowAfterRowAndRejectedAtTheSize) {
    Source image = makeImage(3, 2);
    const unsigned char* base = static_cast<const unsigned char*>(image->getTextureData());
    EXPECT_EQ(base, image->getPixel(0, 0, 0));
    EXPECT_EQ(base + 3 * 4, image->getPixel(1, 1, 0));
    EXPECT_EQ(nullptr, image->getPixel(3, 0, 0));
    EXPECT_EQ(nullptr, image->getPixel(0, 2, 0));
    EXPECT_EQ(nullptr, image->getPixel(0, 0, 1));
}

TEST_F(TextureManagerTest, SourcesAreCachedByNameButNotInAGivenDescription) {
    manager.registerTextureSourceLoader(devil);
    EXPECT_FALSE(manager.getTextureSource("grass.png"));  // no mapper yet
    EXPECT_FALSE(manager.getTextureSource("grass.png", rgba));
    EXPECT_TRUE(calls.empty());

    manager.setTextureSourceNameMapper(textures());
    Source grass = manager.getTextureSource("terrain/grass.png");
    ASSERT_TRUE(grass);
    EXPECT_EQ(".\\textures\\terrain\\grass.png", devil.mLastFile);
    EXPECT_EQ(grass.get(), manager.getTextureSource("terrain/grass.png").get());
    EXPECT_EQ((Calls{"devil.canLoad", "devil.load"}), calls);

    calls.clear();
    Source first = manager.getTextureSource("a.png", rgba);
    EXPECT_NE(first.get(), manager.getTextureSource("a.png", rgba).get());
    // The plain cache stayed empty.
    manager.getTextureSource("a.png");
    EXPECT_EQ((Calls{"devil.canLoadAs", "devil.loadAs", "devil.canLoadAs", "devil.loadAs", "devil.canLoad",
                     "devil.load"}),
              calls);
}

TEST_F(TextureManagerTest, LoadersAreAskedInOrderAndTheFirstThatAcceptsDecidesEvenIfItFails) {
    manager.setTextureSourceNameMapper(textures());
    RecordingSourceLoader jpegs("jpegs", "jpg", true, &calls);
    RecordingSourceLoader failing("failing", "png", false, &calls);
    RecordingSourceLoader later("later", "png", true, &calls);
    manager.registerTextureSourceLoader(jpegs);
    manager.registerTextureSourceLoader(failing);
    manager.registerTextureSourceLoader(later);

    EXPECT_FALSE(manager.getTextureSource("missing.png"));
    EXPECT_EQ((Calls{"jpegs.canLoad", "failing.canLoad", "failing.load"}), calls);
    // The failure is cached: no loader is asked again.
    calls.clear();
    EXPECT_FALSE(manager.getTextureSource("missing.png"));
    EXPECT_TRUE(calls.empty());

    // No loader for the type: nothing is cached and the next request asks again.
    EXPECT_FALSE(manager.getTextureSource("sky.tga"));
    EXPECT_FALSE(manager.getTextureSource("sky.tga"));
    EXPECT_EQ(6u, calls.size());

    // A registration replaces a failed name.
    Source made = onePixel();
    manager.registerTextureSource("missing.png", made);
    EXPECT_EQ(made.get(), manager.getTextureSource("missing.png").get());
}

// Conversion goes to the first loader that can.
TEST_F(TextureManagerTest, ConversionsAndTexturesByNameFromRegistrationOrLoader) {
    Source source = onePixel();
    EXPECT_FALSE(manager.getTextureProxy(source, rgba, true));
    manager.registerTextureSourceLoader(devil);
    EXPECT_FALSE(manager.getTextureProxy(source, rgba, false));
    EXPECT_EQ(source.get(), manager.getTextureProxy(source, rgba, true).get());
    EXPECT_EQ((Calls{"devil.canConvert", "devil.canConvert", "devil.convert"}), calls);

    EXPECT_FALSE(manager.getTexture2D("a"));

    Dorvan::SharedPtr<Texture2D> registered(new Texture2D());
    manager.registerTexture2D("a", registered);
    EXPECT_EQ(registered.get(), manager.getTexture2D("a").get());

    Texture2DLoader loader;
    EXPECT_EQ(0u, manager.registerTextureLoader(loader));
    EXPECT_FALSE(manager.getTexture2D("wall.tex"));  // no texture mapper
    manager.setTextureNameMapper(textures());
    Dorvan::SharedPtr<Texture2D> wall = manager.getTexture2D("wall.tex");
    ASSERT_TRUE(wall);
    EXPECT_EQ(wall.get(), manager.getTexture2D("wall.tex").get());
    EXPECT_EQ(1, loader.mLoads);
    EXPECT_FALSE(manager.getTexture3D("wall.tex"));
}
