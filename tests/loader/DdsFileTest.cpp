#include "plugins/loader/devil/DdsFile.h"

#include <cstdint>
#include <cstring>
#include <tuple>

#include "loader/EngineFixture.h"
#include "plugins/loader/devil/DdsTextureData.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"

using namespace Velun;

namespace {

struct PixelFormat {
    const char* name;
    std::uint32_t flags;  // 0x4 four-character code, 0x40 RGB, 0x20000 luminance, 0x1 alpha
    std::uint32_t bits;
    std::uint32_t masks[4];
};

const PixelFormat kFormats[] = {
    {"DXT1", 0x4, 0, {}},
    {"DXT3", 0x4, 0, {}},
    {"DXT5", 0x4, 0, {}},
    {"rgb24", 0x40, 24, {0xFF0000, 0xFF00, 0xFF, 0}},
    {"rgba32", 0x41, 32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}},
    {"r5g6b5", 0x40, 16, {0xF800, 0x7E0, 0x1F, 0}},
    {"l8", 0x20000, 8, {0xFF, 0, 0, 0}},
    {"l8a8", 0x20001, 16, {0xFF, 0, 0, 0xFF00}},
};

void put32(std::vector<unsigned char>& bytes, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<unsigned char>(value >> (8 * i));
}

std::vector<unsigned char> header(const PixelFormat& format, unsigned int width, unsigned int height,
                                  unsigned int levels, bool cube) {
    std::vector<unsigned char> bytes(128, 0);
    // Magic, header size, flags, height, width, levels; pixel format size, flags and bits.
    const std::size_t at[] = {0, 4, 8, 12, 16, 28, 76, 80, 88};
    const std::uint32_t v[] = {0x20534444, 124, 0x21007,      height,     width,
                               levels,     32,  format.flags, format.bits};
    for (std::size_t i = 0; i < std::size(at); ++i)
        put32(bytes, at[i], v[i]);
    for (int c = 0; c < 4; ++c)
        put32(bytes, 92 + 4 * c, format.masks[c]);
    put32(bytes, 112, cube ? 0xFE00 : 0);
    if (format.flags & 0x4)
        std::memcpy(&bytes[84], format.name, 4);
    return bytes;
}

// Appends a surface of one colour in `format`.
void appendSolid(std::vector<unsigned char>& bytes, const PixelFormat& format, unsigned int width,
                 unsigned int height, Rgba colour) {
    if (format.flags & 0x4) {
        unsigned int c565 = (colour[0] >> 3) << 11 | (colour[1] >> 2) << 5 | colour[2] >> 3;
        unsigned char low = static_cast<unsigned char>(c565), high = static_cast<unsigned char>(c565 >> 8);
        std::vector<unsigned char> block = {low, high, low, high, 0, 0, 0, 0};
        if (format.name[3] == '3')
            block.insert(block.begin(), 8, static_cast<unsigned char>((colour[3] >> 4) * 17));
        if (format.name[3] == '5')
            block.insert(block.begin(), {static_cast<unsigned char>(colour[3]), 0, 0, 0, 0, 0, 0, 0});
        for (unsigned int i = 0; i < ((width + 3) / 4) * ((height + 3) / 4); ++i)
            bytes.insert(bytes.end(), block.begin(), block.end());
        return;
    }
    std::uint32_t pixel = 0;
    for (int c = 0; c < 4; ++c) {
        std::uint32_t mask = format.masks[c];
        if (mask)
            pixel |= static_cast<std::uint32_t>(colour[c] * (std::uint64_t(mask) / (mask & -mask)) / 255) *
                     (mask & -mask);
    }
    for (unsigned int i = 0; i < width * height; ++i) {
        for (unsigned int b = 0; b < format.bits / 8; ++b)
            bytes.push_back(static_cast<unsigned char>(pixel >> (8 * b)));
    }
}

const Rgba kColours[] = {{255, 0, 0, 136}, {0, 255, 0, 255}, {0, 0, 255, 136}, {255, 255, 255, 255}};

// What a format keeps of a colour.
Rgba kept(const PixelFormat& format, Rgba colour) {
    if (format.flags & 0x20000)
        colour[1] = colour[2] = colour[0];
    std::string const name = format.name;
    if (!format.masks[3] && name != "DXT3" && name != "DXT5")
        colour[3] = 255;
    return colour;
}

}  // namespace

TEST(DdsFileTest, ReadsEveryFormatWithItsLevelsAndFaces) {
    // Width, height and faces (2D or a cube), each of three levels: surface s is face s / 3, level s % 3.
    const unsigned int shapes[][3] = {{5, 3, 1}, {4, 4, 6}};
    for (const PixelFormat& format : kFormats) {
        for (const auto& shape : shapes) {
            const unsigned int faces = shape[2];
            SCOPED_TRACE(std::string(format.name) + (faces == 6 ? " cube" : " 2D"));
            auto w = [&shape](unsigned int s) { return std::max(1u, shape[0] >> (s % 3)); };
            auto h = [&shape](unsigned int s) { return std::max(1u, shape[1] >> (s % 3)); };
            std::vector<unsigned char> bytes = header(format, shape[0], shape[1], 3, faces == 6);
            for (unsigned int s = 0; s < 3 * faces; ++s)
                appendSolid(bytes, format, w(s), h(s), kColours[(s / 3 + s % 3) % 4]);
            DdsFile file;
            ASSERT_TRUE(file.read(bytes.data(), bytes.size())) << file.getError();
            ASSERT_EQ(faces, file.getFaceCount());
            ASSERT_EQ(3u, file.getLevelCount());
            for (unsigned int s = 0; s < 3 * faces; ++s) {
                SCOPED_TRACE(s);
                const TextureSource& surface = *file.getSurface(s / 3, s % 3);
                ASSERT_EQ(w(s), surface.getTextureInfo().getWidth());
                ASSERT_EQ(h(s), surface.getTextureInfo().getHeight());
                Rgba expected = kept(format, kColours[(s / 3 + s % 3) % 4]);
                EXPECT_EQ(expected, texel(surface, 0, 0));
                EXPECT_EQ(expected, texel(surface, w(s) - 1, h(s) - 1));
            }
        }
    }
}

TEST(DdsFileTest, DecodesEveryBlockPalette) {
    struct Case {
        const char* format;
        std::vector<unsigned char> blocks;
        Rgba expected[4];  // the first row
    };
    const Case cases[] = {
        // Red over blue: four colours; blue over red: three and transparent black.
        {"DXT1",
         {0x00, 0xF8, 0x1F, 0x00, 0xE4, 0, 0, 0},
         {{255, 0, 0, 255}, {0, 0, 255, 255}, {170, 0, 85, 255}, {85, 0, 170, 255}}},
        {"DXT1",
         {0x1F, 0x00, 0x00, 0xF8, 0xE4, 0, 0, 0},
         {{0, 0, 255, 255}, {255, 0, 0, 255}, {127, 0, 127, 255}, {0, 0, 0, 0}}},
        // Over white: alphas of four bits; indices 0 to 3 over eight alphas, then over six and the extremes.
        {"DXT3",
         {0x50, 0xFA, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0},
         {{255, 255, 255, 0}, {255, 255, 255, 85}, {255, 255, 255, 170}, {255, 255, 255, 255}}},
        {"DXT5",
         {255, 0, 0x88, 0x06, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0},
         {{255, 255, 255, 255}, {255, 255, 255, 0}, {255, 255, 255, 218}, {255, 255, 255, 182}}},
        {"DXT5",
         {0, 255, 0x88, 0x06, 0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0},
         {{255, 255, 255, 0}, {255, 255, 255, 255}, {255, 255, 255, 51}, {255, 255, 255, 102}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.format);
        PixelFormat format = {c.format, 0x4, 0, {}};
        std::vector<unsigned char> bytes = header(format, 4, 4, 1, false);
        bytes.insert(bytes.end(), c.blocks.begin(), c.blocks.end());
        DdsFile file;
        ASSERT_TRUE(file.read(bytes.data(), bytes.size())) << file.getError();
        for (unsigned int x = 0; x < 4; ++x)
            EXPECT_EQ(c.expected[x], texel(*file.getSurface(0, 0), x, 0)) << x;
    }
}

typedef EngineFixture DdsLoaderTest;

TEST_F(DdsLoaderTest, DamagedFilesGiveOneLineAndNothingGoodOnesEveryLevel) {
    // Writes `bytes` below textures/ and loads them, giving the lines logged.
    auto loadDamaged = [this](const std::string& name, const std::vector<unsigned char>& bytes) {
        write("textures/" + name, bytes);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(DevILTextureSourceLoader().load(textureFile(name)));
        return testing::internal::GetCapturedStderr();
    };
    const PixelFormat& dxt1 = kFormats[0];
    std::vector<unsigned char> cube = header(dxt1, 4, 4, 3, true);
    cube.resize(128 + 6 * 3 * 8, 0);
    for (unsigned int surface = 0; surface < 18; ++surface) {
        std::vector<unsigned char> cut(cube.begin(), cube.begin() + 128 + surface * 8 + 3);
        std::string line = "the file ends inside face " + std::to_string(surface / 3) + " level " +
                           std::to_string(surface % 3) + ": it needs 8 bytes, 3 are left";
        EXPECT_EQ("Error opening .\\textures\\cut.dds: " + line + "\n", loadDamaged("cut.dds", cut));
    }

    const std::tuple<std::size_t, std::uint32_t, const char*> damages[] = {
        {0, 0x20534444 + 1, "not a DDS file"},
        {4, 100, "the header or pixel format has a wrong size field"},
        {8, 0x1006, "the header flags 0x1006 do not announce size and pixel format"},
        {16, 0, "the size 0x4 is outside 1 to 16384"},
        {12, 16385, "the size 4x16385 is outside 1 to 16384"},
        {28, 4, "the file announces 4 mipmap levels, but a 4x4 image has 3"},
        {84, 0x32545844, "the compression \"DXT2\" is not read"},
        {112, 0x3E00, "a cube map needs six square faces"},
        {112, 0x200000, "volume textures are not read"},
        // Uncompressed layouts whose masks DevIL's own reader trusted.
        {80, 0x40, "the pixel format (flags 0x40, 0 bits) is not RGB, RGBA or luminance with fitting masks"},
    };
    for (const auto& [at, value, line] : damages) {
        SCOPED_TRACE(line);
        std::vector<unsigned char> bytes = cube;
        put32(bytes, at, value);
        EXPECT_EQ(std::string("Error opening .\\textures\\bad.dds: ") + line + "\n",
                  loadDamaged("bad.dds", bytes));
    }
    PixelFormat wide = {"rgb", 0x40, 16, {0xF800, 0x7E0, 0x1F0000, 0}};
    EXPECT_EQ(
        "Error opening .\\textures\\mask.dds: the pixel format (flags 0x40, 16 bits) is not RGB, RGBA or "
        "luminance with fitting masks\n",
        loadDamaged("mask.dds", header(wide, 1, 1, 1, false)));

    // A good file hands out every level (a requested description goes through DevIL, DevILTest).
    Dorvan::SharedPtr<TextureSource> source = DevILTextureSourceLoader().load(textureFile("quads.dds"));
    auto* dds = dynamic_cast<DdsTextureData*>(source.get());
    ASSERT_NE(nullptr, dds);
    ASSERT_EQ(5u, dds->getLevelCount());
    EXPECT_EQ(1u, dds->getSurface(0, 4)->getTextureInfo().getWidth());
    EXPECT_FALSE(dds->getSurface(1, 0));
}
