#pragma once

// Geometry and textures that the showcase builds in code: a ground plane, boxes and
// procedural textures. Everything goes through the engine's public data classes.

#include <vector>

#include "foundation/SharedPtr.h"
#include "geometry/Geometry.h"
#include "scene/Color.h"
#include "texture/Texture.h"

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

// A size x size checkerboard of cells x cells squares, mipmapped, repeating.
Dorvan::SharedPtr<Velun::Texture> makeCheckerTexture(int size, int cells, Velun::Color a, Velun::Color b);

// Wooden planks with a dark frame, for crates.
Dorvan::SharedPtr<Velun::Texture> makeCrateTexture(int size);

}  // namespace Showcase
