#pragma once

#include <cstddef>

namespace Velun {

// Decodes the S3TC block formats of DDS files into RGBA bytes, one 4x4 block at a time.
namespace DxtBlocks {

enum class Format { Dxt1, Dxt3, Dxt5 };

// Bytes of one block: 8 for DXT1, 16 for DXT3 and DXT5.
std::size_t blockSize(Format format);
// Bytes of a `width` x `height` image in blocks (edge blocks count whole).
std::size_t imageSize(Format format, unsigned int width, unsigned int height);
// Writes width * height RGBA pixels, top row first, from imageSize() bytes of blocks.
void decode(Format format, const unsigned char* blocks, unsigned int width, unsigned int height,
            unsigned char* rgba);

}  // namespace DxtBlocks

}  // namespace Velun
