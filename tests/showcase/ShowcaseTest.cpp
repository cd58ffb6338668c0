#include <gtest/gtest.h>

#include <chrono>
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

struct Rgb {
    int r, g, b;
};

// Colour kinds, loose enough for fog and lighting.
bool grass(Rgb c) { return c.g > c.r + 25 && c.g > c.b + 10; }
bool sand(Rgb c) { return c.r > 140 && c.g > 120 && c.r > c.b + 35; }
bool water(Rgb c) { return c.b > c.r + 40 && c.b > c.g; }
bool sparks(Rgb c) { return c.r > 170 && c.r > c.g + 30 && c.g > c.b + 40; }
// The jeep's paint: a dark olive, darker than sunlit grass.
bool paint(Rgb c) { return c.g >= c.r && c.g > c.b + 8 && c.g < 95 && c.r > 25; }

Rgb at(TextureSource& shot, int x, int y) {
    const unsigned char* p = static_cast<const unsigned char*>(shot.getPixel(x, y, 0));
    return {p[0], p[1], p[2]};
}

// Pixels of a kind below the HUD's band (the top fifth) of a screenshot.
int count(TextureSource& shot, const std::function<bool(Rgb)>& kind) {
    int n = 0, width = int(shot.getTextureInfo().getWidth()), height = int(shot.getTextureInfo().getHeight());
    for (int y = height / 5; y < height; ++y)
        for (int x = 0; x < width; ++x)
            n += kind(at(shot, x, y)) ? 1 : 0;
    return n;
}

// The mean absolute sample of a 16-bit PCM WAV file, after its header.
double loudness(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    in.seekg(44);
    double sum = 0.0;
    std::int16_t sample = 0;
    std::size_t samples = 0;
    for (; in.read(reinterpret_cast<char*>(&sample), 2); ++samples)
        sum += std::abs(int(sample));
    return samples ? sum / double(samples) : 0.0;
}

}  // namespace

// The valley as a newcomer sees it in the README's screenshots: the overview with the
// river under the picked pixel, the jeep close up, the campfire by the river; the sound
// it played, its frame statistics, and its refusal of bad arguments.
TEST(ShowcaseTest, ShowsTheValleyPlaysItsSoundAndRefusesBadArguments) {
    fs::path const program = fs::path(VELUN_BINARY_DIR) / "examples" / "showcase";
    if (!fs::exists(program))
        GTEST_SKIP() << "the showcase is not built in this configuration";
    auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    fs::path const dir = fs::temp_directory_path() / ("velun-showcase-" + std::to_string(stamp));
    fs::create_directories(dir);
    struct Cleanup {  // also when an assertion ends the test early
        fs::path dir;
        ~Cleanup() {
            VelunCore::getSingleton().shutdown();
            fs::remove_all(dir);
        }
    } cleanup{dir};
    auto run = [&](const std::string& arguments) {
        return std::system(
            (program.string() + " " + arguments + " > " + (dir / "output.txt").string() + " 2>&1").c_str());
    };
    fs::path wav = dir / "sound.wav";
    ASSERT_EQ(0, run("--frames 24 --size 320x240 --pick 160,120 --screenshots " + dir.string() +
                     " --sound-wav " + wav.string()));
    std::ifstream out(dir / "output.txt");
    std::string text((std::istreambuf_iterator<char>(out)), std::istreambuf_iterator<char>());
    for (const char* line : {"picked: river at", "frames drawn: 24", "frame time: mean"})
        EXPECT_NE(std::string::npos, text.find(line)) << text;

    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    TextureManager& textures = core.getResourceManager().getTextureManager();
    textures.setTextureSourceNameMapper(Dorvan::SharedPtr<NameMapper>(new FileNameMapper(dir.string())));
    std::vector<Dorvan::SharedPtr<TextureSource>> shots;
    for (int shot = 1; shot <= 3; ++shot) {
        shots.push_back(textures.getTextureSource("showcase-" + std::to_string(shot) + ".png"));
        ASSERT_FALSE(shots.back().isNull()) << shot;
        EXPECT_EQ(320u, shots.back()->getTextureInfo().getWidth());
    }
    Rgb picked = at(*shots[0], 160, 120);
    EXPECT_TRUE(water(picked)) << picked.r << " " << picked.g << " " << picked.b;
    EXPECT_GT(count(*shots[0], grass), 2000) << "grass layer in the overview";
    EXPECT_GT(count(*shots[1], paint), 300) << "the jeep's texture close up";
    EXPECT_GT(count(*shots[2], sand), 200) << "sand layer on the river bank";
    EXPECT_GT(count(*shots[2], sparks), 20) << "the campfire's sparks";
    // Engine and river at full volume give a mean sample in the hundreds.
    EXPECT_GT(loudness(wav), 50.0);

    for (const char* bad : {"--size tiny", "--frames", "--pick 3"})
        EXPECT_NE(0, run(bad)) << bad;
}
