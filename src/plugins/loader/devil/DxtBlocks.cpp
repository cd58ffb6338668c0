#include "plugins/loader/devil/DxtBlocks.h"

#include <cstdint>

namespace Velun {

namespace DxtBlocks {

namespace {

// The 16 texels of one block, RGBA, row by row.
using Block = unsigned char[16][4];

unsigned int word16(const unsigned char* at) { return at[0] | (at[1] << 8); }

void expand565(unsigned int colour, unsigned char* rgb) {
    unsigned int r = (colour >> 11) & 31, g = (colour >> 5) & 63, b = colour & 31;
    rgb[0] = static_cast<unsigned char>((r << 3) | (r >> 2));
    rgb[1] = static_cast<unsigned char>((g << 2) | (g >> 4));
    rgb[2] = static_cast<unsigned char>((b << 3) | (b >> 2));
}

unsigned char mix(unsigned int a, unsigned int b, unsigned int weightA, unsigned int weightB) {
    return static_cast<unsigned char>((a * weightA + b * weightB) / (weightA + weightB));
}

// The colour half of every format: two 565 end points and 2-bit indices. DXT1 blocks
// whose first end point is not the greater one have three colours and transparent black.
void decodeColours(const unsigned char* data, bool threeColourMode, Block& out) {
    unsigned int c0 = word16(data), c1 = word16(data + 2);
    unsigned char palette[4][4] = {};
    expand565(c0, palette[0]);
    expand565(c1, palette[1]);
    bool three = threeColourMode && c0 <= c1;
    for (int c = 0; c < 3; ++c) {
        palette[2][c] =
            three ? mix(palette[0][c], palette[1][c], 1, 1) : mix(palette[0][c], palette[1][c], 2, 1);
        palette[3][c] = three ? 0 : mix(palette[0][c], palette[1][c], 1, 2);
    }
    palette[0][3] = palette[1][3] = palette[2][3] = 255;
    palette[3][3] = three ? 0 : 255;
    for (int texel = 0; texel < 16; ++texel) {
        unsigned int index = (data[4 + texel / 4] >> (2 * (texel % 4))) & 3;
        for (int c = 0; c < 4; ++c)
            out[texel][c] = palette[index][c];
    }
}

// DXT3: four bits of alpha per texel.
void decodeExplicitAlpha(const unsigned char* data, Block& out) {
    for (int texel = 0; texel < 16; ++texel) {
        unsigned int nibble = (data[texel / 2] >> (4 * (texel % 2))) & 15;
        out[texel][3] = static_cast<unsigned char>(nibble * 17);
    }
}

// DXT5: two alpha end points and 3-bit indices into eight values between them (or six
// and the extremes 0 and 255, when the first end point is not the greater).
void decodeInterpolatedAlpha(const unsigned char* data, Block& out) {
    unsigned int a0 = data[0], a1 = data[1];
    unsigned char values[8] = {static_cast<unsigned char>(a0), static_cast<unsigned char>(a1)};
    unsigned int steps = a0 > a1 ? 7 : 5;
    for (unsigned int i = 1; i < steps; ++i)
        values[i + 1] = mix(a0, a1, steps - i, i);
    if (steps == 5) {
        values[6] = 0;
        values[7] = 255;
    }
    std::uint64_t bits = 0;
    for (int i = 5; i >= 0; --i)
        bits = (bits << 8) | data[2 + i];
    for (int texel = 0; texel < 16; ++texel)
        out[texel][3] = values[(bits >> (3 * texel)) & 7];
}

void decodeBlock(Format format, const unsigned char* data, Block& out) {
    if (format == Format::Dxt1) {
        decodeColours(data, true, out);
        return;
    }
    decodeColours(data + 8, false, out);
    if (format == Format::Dxt3)
        decodeExplicitAlpha(data, out);
    else
        decodeInterpolatedAlpha(data, out);
}

// Copies the texels of a block that lie inside the image.
void storeBlock(const Block& block, unsigned int left, unsigned int top, unsigned int width,
                unsigned int height, unsigned char* rgba) {
    for (unsigned int y = 0; y < 4 && top + y < height; ++y) {
        for (unsigned int x = 0; x < 4 && left + x < width; ++x) {
            unsigned char* pixel = rgba + 4 * ((static_cast<std::size_t>(top) + y) * width + left + x);
            for (int c = 0; c < 4; ++c)
                pixel[c] = block[4 * y + x][c];
        }
    }
}

}  // namespace

std::size_t blockSize(Format format) { return format == Format::Dxt1 ? 8 : 16; }

std::size_t imageSize(Format format, unsigned int width, unsigned int height) {
    std::size_t across = (static_cast<std::size_t>(width) + 3) / 4;
    std::size_t down = (static_cast<std::size_t>(height) + 3) / 4;
    return across * down * blockSize(format);
}

void decode(Format format, const unsigned char* blocks, unsigned int width, unsigned int height,
            unsigned char* rgba) {
    Block block;
    for (unsigned int top = 0; top < height; top += 4) {
        for (unsigned int left = 0; left < width; left += 4) {
            decodeBlock(format, blocks, block);
            storeBlock(block, left, top, width, height, rgba);
            blocks += blockSize(format);
        }
    }
}

}  // namespace DxtBlocks

}  // namespace Velun
