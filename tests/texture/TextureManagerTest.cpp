#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/FileNameMapper.h"
#include "foundation/CowMemPtr.h"
#include "texture/TextureData.h"
#include "texture/TextureManager.h"

using namespace Velun;

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
