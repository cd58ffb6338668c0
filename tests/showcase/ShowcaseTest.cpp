#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include "Velun.h"

using namespace Velun;
namespace fs = std::filesystem;

namespace {

// Runs the showcase headless for a few frames and reads its screenshots back through
// the engine's own image loading.
class ShowcaseTest : public testing::Test {
protected:
    void SetUp() override {
        mProgram = fs::path(VELUN_BINARY_DIR) / "examples" / "showcase";
        if (!fs::exists(mProgram))
            GTEST_SKIP() << "the showcase is not built in this configuration";
        auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        mShots = fs::temp_directory_path() / ("velun-showcase-" + std::to_string(stamp));
        fs::remove_all(mShots);
    }
    void TearDown() override {
        if (!mShots.empty())
            fs::remove_all(mShots);
        VelunCore::getSingleton().shutdown();
    }

    int runShowcase(const std::string& arguments) {
        std::string command =
            mProgram.string() + " " + arguments + " > " + (mShots / "output.txt").string() + " 2>&1";
        fs::create_directories(mShots);
        return std::system(command.c_str());
    }

    fs::path mProgram;
    fs::path mShots;
};

struct Picture {
    int width = 0, height = 0;
    int distinctColours = 0;
    int jeepGreen = 0;  // pixels of the olive green of the jeep's paint, below the HUD
};

Picture inspect(Dorvan::SharedPtr<TextureSource> source) {
    Picture picture;
    const TextureInfo& info = source->getTextureInfo();
    picture.width = static_cast<int>(info.getWidth());
    picture.height = static_cast<int>(info.getHeight());
    std::set<int> colours;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) {
            const unsigned char* p = static_cast<const unsigned char*>(source->getPixel(x, y, 0));
            colours.insert((p[0] >> 3) << 10 | (p[1] >> 3) << 5 | (p[2] >> 3));
            // Dull green: the HUD's meter is a bright green and stays out by its brightness.
            if (y > picture.height / 10 && p[1] > p[0] + 8 && p[1] > p[2] + 8 && p[1] < 180)
                ++picture.jeepGreen;
        }
    picture.distinctColours = static_cast<int>(colours.size());
    return picture;
}

}  // namespace

TEST_F(ShowcaseTest, DrawsTheWorldAndWritesScreenshots) {
    ASSERT_EQ(0, runShowcase("--frames 24 --size 320x240 --screenshots " + mShots.string()));

    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    TextureManager& textures = core.getResourceManager().getTextureManager();
    textures.setTextureSourceNameMapper(Dorvan::SharedPtr<NameMapper>(new FileNameMapper(mShots.string())));

    for (int shot = 1; shot <= 3; ++shot) {
        std::string name = "showcase-" + std::to_string(shot) + ".png";
        Dorvan::SharedPtr<TextureSource> source = textures.getTextureSource(name);
        ASSERT_FALSE(source.isNull()) << name;
        Picture picture = inspect(source);
        EXPECT_EQ(320, picture.width);
        EXPECT_EQ(240, picture.height);
        // Textures, lights and fog give a picture of many colours, not a cleared screen.
        EXPECT_GT(picture.distinctColours, 200) << name;
        // The jeeps stand in view with their painted texture.
        EXPECT_GT(picture.jeepGreen, 300) << name;
    }
}

TEST_F(ShowcaseTest, PrintsFrameStatisticsAndRefusesBadArguments) {
    ASSERT_EQ(0, runShowcase("--frames 5 --size 160x120"));
    std::ifstream output(mShots / "output.txt");
    std::string text((std::istreambuf_iterator<char>(output)), std::istreambuf_iterator<char>());
    EXPECT_NE(std::string::npos, text.find("frames drawn: 5")) << text;
    EXPECT_NE(std::string::npos, text.find("frame time: mean")) << text;

    EXPECT_NE(0, runShowcase("--size tiny"));
    EXPECT_NE(0, runShowcase("--frames"));
}
