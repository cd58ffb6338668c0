#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

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
        mDir = fs::temp_directory_path() / ("velun-showcase-" + std::to_string(stamp));
        fs::create_directories(mDir);
    }
    void TearDown() override {
        if (!mDir.empty())
            fs::remove_all(mDir);
        VelunCore::getSingleton().shutdown();
    }

    int runShowcase(const std::string& arguments) {
        std::string command =
            mProgram.string() + " " + arguments + " > " + (mDir / "output.txt").string() + " 2>&1";
        return std::system(command.c_str());
    }
    std::string output() const {
        std::ifstream in(mDir / "output.txt");
        return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    }

    fs::path mProgram;
    fs::path mDir;
};

struct Rgb {
    int r, g, b;
};

// One screenshot, read through the engine's image loader.
class Picture {
public:
    explicit Picture(Dorvan::SharedPtr<TextureSource> source) : mSource(source) {}
    int width() const { return int(mSource->getTextureInfo().getWidth()); }
    int height() const { return int(mSource->getTextureInfo().getHeight()); }
    Rgb at(int x, int y) const {
        const unsigned char* p = static_cast<const unsigned char*>(mSource->getPixel(x, y, 0));
        return {p[0], p[1], p[2]};
    }
    // Pixels of a kind below the HUD's band (the top fifth).
    int count(const std::function<bool(Rgb)>& kind) const {
        int n = 0;
        for (int y = height() / 5; y < height(); ++y)
            for (int x = 0; x < width(); ++x)
                n += kind(at(x, y)) ? 1 : 0;
        return n;
    }

private:
    Dorvan::SharedPtr<TextureSource> mSource;
};

// Colour kinds, loose enough for fog and lighting.
bool grass(Rgb c) { return c.g > c.r + 25 && c.g > c.b + 10; }
bool sand(Rgb c) { return c.r > 140 && c.g > 120 && c.r > c.b + 35; }
bool water(Rgb c) { return c.b > c.r + 40 && c.b > c.g; }
bool sparks(Rgb c) { return c.r > 170 && c.r > c.g + 30 && c.g > c.b + 40; }
// The jeep's paint: a dark olive, darker than sunlit grass.
bool paint(Rgb c) { return c.g >= c.r && c.g > c.b + 8 && c.g < 95 && c.r > 25; }

// The mean absolute sample of a 16-bit PCM WAV file, skipping its header.
double loudness(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (bytes.size() <= 44)
        return 0.0;
    double sum = 0.0;
    size_t samples = (bytes.size() - 44) / 2;
    for (size_t i = 0; i < samples; ++i) {
        std::int16_t s =
            std::int16_t(std::uint8_t(bytes[44 + 2 * i]) | (std::uint8_t(bytes[45 + 2 * i]) << 8));
        sum += std::abs(int(s));
    }
    return sum / double(samples);
}

}  // namespace

// The valley as a newcomer sees it in the README's screenshots: the overview with the
// river under the picked pixel, the jeep close up, the campfire by the river; and the
// sound it played.
TEST_F(ShowcaseTest, ShowsTheValleyAndPlaysItsSound) {
    fs::path wav = mDir / "sound.wav";
    ASSERT_EQ(0, runShowcase("--frames 24 --size 320x240 --pick 160,120 --screenshots " + mDir.string() +
                             " --sound-wav " + wav.string()));
    std::string text = output();
    EXPECT_NE(std::string::npos, text.find("picked: river at")) << text;

    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    TextureManager& textures = core.getResourceManager().getTextureManager();
    textures.setTextureSourceNameMapper(Dorvan::SharedPtr<NameMapper>(new FileNameMapper(mDir.string())));
    std::vector<Picture> shots;
    for (int shot = 1; shot <= 3; ++shot) {
        Dorvan::SharedPtr<TextureSource> source =
            textures.getTextureSource("showcase-" + std::to_string(shot) + ".png");
        ASSERT_FALSE(source.isNull()) << shot;
        shots.emplace_back(source);
        EXPECT_EQ(320, shots.back().width());
    }
    Rgb picked = shots[0].at(160, 120);
    EXPECT_TRUE(water(picked)) << picked.r << " " << picked.g << " " << picked.b;
    EXPECT_GT(shots[0].count(grass), 2000) << "grass layer in the overview";
    EXPECT_GT(shots[1].count(paint), 300) << "the jeep's texture close up";
    EXPECT_GT(shots[2].count(sand), 200) << "sand layer on the river bank";
    EXPECT_GT(shots[2].count(sparks), 20) << "the campfire's sparks";
    // Engine and river at full volume give a mean sample in the hundreds.
    EXPECT_GT(loudness(wav), 50.0);
}

TEST_F(ShowcaseTest, PrintsFrameStatisticsAndRefusesBadArguments) {
    ASSERT_EQ(0, runShowcase("--frames 5 --size 160x120"));
    std::string text = output();
    EXPECT_NE(std::string::npos, text.find("frames drawn: 5")) << text;
    EXPECT_NE(std::string::npos, text.find("frame time: mean")) << text;

    EXPECT_NE(0, runShowcase("--size tiny"));
    EXPECT_NE(0, runShowcase("--frames"));
    EXPECT_NE(0, runShowcase("--pick 3"));
}
