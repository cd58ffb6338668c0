
#include <IL/il.h>
#include <IL/ilu.h>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include "core/PluginManager.h"
#include "geometry/GeometryObject.h"
#include "loader/EngineFixture.h"
#include "plugins/loader/devil/DevILPlugin.h"
#include "plugins/loader/devil/DevILTextureData.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "plugins/loader/ms3d/Ms3dPlugin.h"

using namespace Velun;

// DevIL 1.7.8 keeps blocks of its own on some failure paths of its readers.
extern "C" const char* __lsan_default_suppressions() { return "leak:libIL.so\n"; }

namespace {

class DevILTextureSourceLoaderTest : public EngineFixture {
protected:
    void SetUp() override {
        EngineFixture::SetUp();
        plugin.registerPlugin();
    }
    void TearDown() override {
        plugin.unregisterPlugin();
        EngineFixture::TearDown();
    }

    Dorvan::SharedPtr<TextureSource> source(const std::string& name) {
        return core.getResourceManager().getTextureManager().getTextureSource(name);
    }

    static NameMapper::ResourceInfo resource(const std::string& fileType) {
        return NameMapper::ResourceInfo("a." + fileType, ".\\textures\\a." + fileType, fileType);
    }

    DevILPlugin plugin;
};

// A texel of an image of bytes in RGB or RGBA order.
struct Rgba {
    int r, g, b, a;
};

Rgba texel(const TextureSource& image, unsigned int x, unsigned int y) {
    const auto* p = static_cast<const std::uint8_t*>(image.getPixel(x, y, 0));
    return Rgba{p[0], p[1], p[2], image.getTextureInfo().getChannels() == 4 ? p[3] : 255};
}

}  // namespace

TEST_F(DevILTextureSourceLoaderTest, MissingAndCorruptFilesLogAndGiveNothing) {
    testing::internal::CaptureStderr();
    Dorvan::SharedPtr<TextureSource> missing = source("missing.png");
    std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_FALSE(missing);
    EXPECT_EQ(std::string("Error opening .\\textures\\missing.png: ") +
                  iluErrorString(IL_COULD_NOT_OPEN_FILE) + "\n",
              lines);

    // DevIL hands a freed name out again, so a failed image that was deleted leaves the
    // next free name unchanged.
    ILuint before = 0;
    ilGenImages(1, &before);
    ilDeleteImages(1, &before);
    testing::internal::CaptureStderr();
    Dorvan::SharedPtr<TextureSource> corrupt = source("corrupt.png");
    lines = testing::internal::GetCapturedStderr();
    EXPECT_FALSE(corrupt);
    ASSERT_FALSE(lines.empty());
    std::istringstream each(lines);
    for (std::string line; std::getline(each, line);)
        EXPECT_EQ(0u, line.find("Error opening .\\textures\\corrupt.png: ")) << line;

    ILuint after = 0;
    ilGenImages(1, &after);
    ilDeleteImages(1, &after);
    EXPECT_EQ(before, after);

    // Headers announcing far more pixels than the file holds are refused before DevIL
    // allocates for them (the BMP came from the fuzzer: 402 million pixels a row).
    for (const char* name : {"huge.bmp", "huge.tga"}) {
        SCOPED_TRACE(name);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(source(name));
        EXPECT_EQ(std::string("Error opening .\\textures\\") + name + ": " +
                      iluErrorString(IL_INVALID_FILE_HEADER) + "\n",
                  testing::internal::GetCapturedStderr());
    }
}

TEST_F(DevILTextureSourceLoaderTest, DeliversARequestedDescription) {
    TextureInfo wanted;
    wanted.setWidth(8);
    wanted.setHeight(8);
    wanted.setDepth(1);
    wanted.setColorFormat(Color::Rgba);
    wanted.setDataType(DataType::UnsignedByte);
    Dorvan::SharedPtr<TextureSource> image =
        core.getResourceManager().getTextureManager().getTextureSource("quads.bmp", wanted);
    ASSERT_TRUE(image);
    EXPECT_EQ(wanted, image->getTextureInfo());
    Rgba topLeft = texel(*image, 1, 1);
    EXPECT_EQ(255, topLeft.r);
    EXPECT_EQ(0, topLeft.b);
    EXPECT_EQ(255, topLeft.a);
    EXPECT_EQ(255, texel(*image, 1, 6).b);

    // Left open, the file's own description stays.
    Dorvan::SharedPtr<TextureSource> same =
        core.getResourceManager().getTextureManager().getTextureSource("quads.tga", TextureInfo());
    ASSERT_TRUE(same);
    EXPECT_EQ(Color::Bgr, same->getTextureInfo().getColorFormat());
    EXPECT_EQ(16u, same->getTextureInfo().getWidth());
}

TEST_F(DevILTextureSourceLoaderTest, ImagesOutliveShutdownHarmlessly) {
    Dorvan::SharedPtr<TextureSource> rgb = source("rgb.png");
    ASSERT_TRUE(rgb);
    plugin.unregisterPlugin();
    core.shutdown();
    EXPECT_EQ(nullptr, rgb->getTextureData());
    EXPECT_EQ(nullptr, rgb->getPixel(0, 0, 0));
    EXPECT_EQ(16u, rgb->getTextureInfo().getWidth());

    // A new session's images are not touched by the old source's end.
    core.startup();
    DevILTextureSourceLoader loader;
    loader.initialize();
    Dorvan::SharedPtr<TextureSource> again =
        loader.load(NameMapper::ResourceInfo("rgb.png", ".\\textures\\rgb.png", "png"));
    ASSERT_TRUE(again);
    rgb = Dorvan::SharedPtr<TextureSource>();
    EXPECT_EQ(255, texel(*again, 3, 3).r);
    again = Dorvan::SharedPtr<TextureSource>();
    loader.shutdown();
}

namespace {

class LoaderPluginsTest : public EngineFixture {};

}  // namespace

TEST_F(LoaderPluginsTest, SetupBringsBothLoadersInTheirPlaces) {
    core.setup(true);
    PluginManager& plugins = core.getPluginManager();
    ASSERT_GE(plugins.getPluginCount(), 4u);
    EXPECT_NE(nullptr, dynamic_cast<DevILPlugin*>(plugins.getPlugin(2)));
    EXPECT_NE(nullptr, dynamic_cast<Ms3dPlugin*>(plugins.getPlugin(3)));
    EXPECT_EQ(1u, core.getResourceManager().getTextureManager().getTextureSourceLoaderCount());
    EXPECT_EQ(1u, core.getResourceManager().getObjectManager().getObjectLoaderCount());

    // The user's way: a model below models/, its image below textures/.
    std::unique_ptr<ObjectNode> jeep(core.getResourceManager().getObjectManager().createObject("jeep1.ms3d"));
    GeometryObject* object = dynamic_cast<GeometryObject*>(jeep.get());
    ASSERT_NE(nullptr, object);
    ASSERT_TRUE(object->getDefaultMaterial(0));
    EXPECT_TRUE(object->getDefaultMaterial(0)->getTexture(0));
}

TEST_F(DevILTextureSourceLoaderTest, TakesFilesByTheirType) {
    DevILTextureSourceLoader loader;
    for (const char* type : {"png", "jpg", "jpeg", "tga", "bmp", "dds", "PNG", "Jpg"})
        EXPECT_TRUE(loader.canLoad(resource(type))) << type;
    for (const char* type : {"ms3d", "wav", "txt", "", "gif", "pcx", "psd", "tif"})
        EXPECT_FALSE(loader.canLoad(resource(type))) << type;
    EXPECT_FALSE(loader.canConvert(TextureInfo(), false));
    EXPECT_FALSE(loader.convert(Dorvan::SharedPtr<TextureSource>(), TextureInfo(), false));

    TextureInfo palette;
    palette.setColorFormat(Color::ColorIndex);
    EXPECT_TRUE(loader.canLoad(resource("png"), TextureInfo()));
    EXPECT_FALSE(loader.canLoad(resource("png"), palette));
    EXPECT_FALSE(loader.canLoad(resource("wav"), TextureInfo()));

    // A name no loader takes is nobody's error.
    testing::internal::CaptureStderr();
    EXPECT_FALSE(source("notes.txt"));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}
