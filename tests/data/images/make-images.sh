#!/usr/bin/env bash
# Regenerates the test images with ImageMagick: one 16x16 picture of four 8x8 squares,
# red top left, green top right, blue bottom left, white bottom right, in every file
# format and pixel layout the image loader's tests check.
set -euo pipefail
cd "$(dirname "$0")"
convert -size 8x8 xc:red xc:lime +append top.ppm
convert -size 8x8 xc:blue xc:white +append bottom.ppm
convert top.ppm bottom.ppm -append quads.ppm
rm top.ppm bottom.ppm
convert quads.ppm -define png:color-type=2 PNG24:rgb.png
convert quads.ppm -alpha set -channel A -fx 'i<8 ? 1 : 0.5' +channel PNG32:rgba.png
convert quads.ppm PNG8:palette.png
convert quads.ppm -depth 16 PNG48:deep.png
convert quads.ppm -colorspace Gray -define png:color-type=0 -depth 8 grey.png
convert quads.ppm -quality 95 quads.jpg
# ImageMagick 6.9 writes TGA rows top first under a bottom-left origin flag, so the TGA
# files are written here: 24-bit rows bottom first (the usual TGA order), and 32-bit
# with half-transparent right squares, rows top first (origin flag set).
python3 - <<'PY'
import struct
def colour(x, y, alpha):
    top, left = y < 8, x < 8
    bgr = (0, 0, 255) if top and left else (0, 255, 0) if top else (255, 0, 0) if left else (255, 255, 255)
    return bytes(bgr) + (bytes([255 if left else 128]) if alpha else b'')
def tga(name, alpha, top_first):
    header = struct.pack('<BBBHHBHHHHBB', 0, 0, 2, 0, 0, 0, 0, 0, 16, 16, 32 if alpha else 24,
                         (8 if alpha else 0) | (0x20 if top_first else 0))
    rows = range(16) if top_first else range(15, -1, -1)
    with open(name, 'wb') as f:
        f.write(header + b''.join(colour(x, y, alpha) for y in rows for x in range(16)))
tga('quads.tga', False, False)
tga('quads-alpha.tga', True, True)
PY
convert quads.ppm BMP3:quads.bmp
convert quads.ppm -define dds:compression=none quads.dds
convert quads.ppm -define dds:compression=dxt1 quads-dxt1.dds
rm quads.ppm
# A PNG signature followed by garbage.
printf '\x89PNG\r\n\x1a\nthis is not an image at all' > corrupt.png
# A TGA header announcing 65535 x 65535 pixels of 32 bits over four bytes of data.
printf '\x00\x00\x02\x00\x00\x00\x00\x00\x00\x00\x00\x00\xff\xff\xff\xff\x20\x28\x00\x00\x00\xff' > huge.tga
# huge.bmp is an input the image fuzzer found: a BMP header announcing 402,653,200
# pixels a row over 22 bytes of data; it is kept as it was found.
