
#include <IL/il.h>
#include <IL/ilu.h>
#include <sstream>

#include "loader/EngineFixture.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"

using namespace Velun;

// DevIL 1.7.8 keeps blocks of its own on some failure paths of its readers.
extern "C" const char* __lsan_default_suppressions() { return "leak:libIL.so\n"; }

typedef EngineFixture DevILTextureSourceLoaderTest;

TEST_F(DevILTextureSourceLoaderTest, MissingAndCorruptFilesLogAndGiveNothingGoodOnesWhatIsAsked) {
    // DevIL hands a freed name out again, so a failed image that was deleted leaves the
    // next free name unchanged.
    auto nextName = [] {
        ILuint name = 0;
        ilGenImages(1, &name);
        ilDeleteImages(1, &name);
        return name;
    };
    const ILuint before = nextName();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(textures().getTextureSource("corrupt.png"));
    std::istringstream lines(testing::internal::GetCapturedStderr());
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    do
        EXPECT_EQ(0u, line.find("Error opening .\\textures\\corrupt.png: ")) << line;
    while (std::getline(lines, line));
    EXPECT_EQ(before, nextName());

    // Headers announcing far more pixels than the file holds are refused before DevIL
    // allocates for them (the BMP came from the fuzzer: 402 million pixels a row). A name
    // no loader takes is nobody's error.
    const std::pair<const char*, ILenum> cases[] = {{"missing.png", IL_COULD_NOT_OPEN_FILE},
                                                    {"huge.bmp", IL_INVALID_FILE_HEADER},
                                                    {"huge.tga", IL_INVALID_FILE_HEADER},
                                                    {"notes.txt", IL_NO_ERROR}};
    for (const auto& [name, error] : cases) {
        testing::internal::CaptureStderr();
        EXPECT_FALSE(textures().getTextureSource(name)) << name;
        EXPECT_EQ(error == IL_NO_ERROR ? std::string()
                                       : std::string("Error opening .\\textures\\") + name + ": " +
                                             iluErrorString(error) + "\n",
                  testing::internal::GetCapturedStderr());
    }

    // A requested description: red top left and blue bottom left, in the byte order asked for.
    for (const Color::Format format : {Color::Rgba, Color::Bgr}) {
        const char* name = format == Color::Rgba ? "quads.bmp" : "quads-dxt1.dds";
        SCOPED_TRACE(name);
        TextureInfo wanted(8, 8, 1, DataType::UnsignedByte, format);
        Dorvan::SharedPtr<TextureSource> image = textures().getTextureSource(name, wanted);
        ASSERT_TRUE(image);
        EXPECT_EQ(wanted, image->getTextureInfo());
        const Rgba red{255 * (format == Color::Rgba), 0, 255 * (format == Color::Bgr), 255};
        EXPECT_EQ(red, texel(*image, 1, 1));
        EXPECT_EQ((Rgba{red[2], 0, red[0], 255}), texel(*image, 1, 6));
    }
    // Left open, the file's own description stays.
    Dorvan::SharedPtr<TextureSource> same = textures().getTextureSource("quads.tga", TextureInfo());
    ASSERT_TRUE(same);
    EXPECT_EQ(Color::Bgr, same->getTextureInfo().getColorFormat());
    EXPECT_EQ(16u, same->getTextureInfo().getWidth());
}

TEST_F(DevILTextureSourceLoaderTest, ImagesOutliveShutdownHarmlesslyAndFilesAreTakenByType) {
    Dorvan::SharedPtr<TextureSource> rgb = textures().getTextureSource("rgb.png");
    ASSERT_TRUE(rgb);
    images.unregisterPlugin();
    core.shutdown();
    EXPECT_EQ(nullptr, rgb->getTextureData());
    EXPECT_EQ(nullptr, rgb->getPixel(0, 0, 0));
    EXPECT_EQ(16u, rgb->getTextureInfo().getWidth());

    // A new session's images are not touched by the old source's end.
    core.startup();
    DevILTextureSourceLoader loader;
    loader.initialize();
    Dorvan::SharedPtr<TextureSource> again = loader.load(textureFile("rgb.png"));
    ASSERT_TRUE(again);
    rgb = Dorvan::SharedPtr<TextureSource>();
    EXPECT_EQ(255, texel(*again, 3, 3)[0]);
    again = Dorvan::SharedPtr<TextureSource>();

    // Files are taken by their type.
    auto takes = [&loader](const char* name) {
        return loader.canLoad(textureFile(name)) + loader.canLoad(textureFile(name), TextureInfo());
    };
    for (const char* name : {"a.png", "a.jpg", "a.jpeg", "a.tga", "a.bmp", "a.dds", "a.PNG", "a.Jpg"})
        EXPECT_EQ(2, takes(name)) << name;
    for (const char* name : {"a.ms3d", "a.wav", "a.txt", "a.", "a.gif", "a.pcx", "a.psd", "a.tif"})
        EXPECT_EQ(0, takes(name)) << name;
    EXPECT_FALSE(loader.canLoad(textureFile("a.png"),
                                TextureInfo(1, 1, 1, DataType::UnsignedByte, Color::ColorIndex)));
    loader.shutdown();
}
