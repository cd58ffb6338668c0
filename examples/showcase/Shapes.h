#pragma once

// Geometry and textures that the showcase builds in code: a ground plane, boxes and
// procedural textures. Everything goes through the engine's public data classes.

#include <functional>
#include <vector>

#include "foundation/SharedPtr.h"
#include "geometry/Geometry.h"
#include "scene/Color.h"
#include "texture/Texture.h"
#include "texture/TextureSource.h"

namespace Showcase {

// A quad in the z = 0 plane from (x0, y0) to (x1, y1), facing +Z, with normals and
// texture coordinates running from 0 to `uvScale` across it. Lighting is computed at
// vertices, so a surface that lamps and spots should light in pools is cut into
// divisions x divisions cells.
Dorvan::SharedPtr<Velun::Geometry> makeQuad(float x0, float y0, float x1, float y1, float uvScale = 1.0f,
                                            int divisions = 1);

// The same quad with a colour, alpha included, at every vertex: for translucent
// surfaces that are not lit, whose alpha then comes from the vertices.
Dorvan::SharedPtr<Velun::Geometry> makeColoredQuad(float x0, float y0, float x1, float y1,
                                                   Velun::Color color);

// Many such quads in one geometry, all of one colour: for text and marks on the HUD.
struct Rect {
    float x0, y0, x1, y1;
};
Dorvan::SharedPtr<Velun::Geometry> makeColoredQuads(const std::vector<Rect>& rects, Velun::Color color);

// A box of half extents (hx, hy, hz) around the origin, each face textured 0..1. With
// `inside` its faces look inwards, as a room or a sky box seen from within.
Dorvan::SharedPtr<Velun::Geometry> makeBox(float hx, float hy, float hz, bool inside = false);

// An image painted pixel by pixel: `paint` writes the channels of the format (0 to 1)
// for pixel (x, y), row 0 at the top. Bytes, or 16-bit channels with `sixteenBits`.
Dorvan::SharedPtr<Velun::TextureSource>
makeImage(int width, int height, Velun::Color::Format format,
          const std::function<void(int x, int y, float* channels)>& paint, bool sixteenBits = false);

// A repeating, mipmapped texture over an image.
Dorvan::SharedPtr<Velun::Texture> makeTexture(Dorvan::SharedPtr<Velun::TextureSource> image);

// A hash of (x, y, seed) from 0 to 1: grain for procedural textures.
float grain(int x, int y, int seed);

// Wooden planks with a dark frame, for crates.
Dorvan::SharedPtr<Velun::Texture> makeCrateTexture(int size);

}  // namespace Showcase
