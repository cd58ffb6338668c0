#include "Valley.h"

#include <algorithm>
#include <cmath>

#include "Shapes.h"

using Dorvan::SharedPtr;
using Dorvan::TVector;
using namespace Velun;

namespace Showcase {

const float Valley::HalfSize = 48.0f;

namespace {

const float Pi = 3.14159265f;
const unsigned int Tiles = 4;
const float TileSize = 2.0f * Valley::HalfSize / Tiles;
// 16 vertices across a patch (level 4), 2 x 2 patches a tile (level 1): 32 vertices
// across a tile, one per pixel of its height map, so the queries read the drawn ground.
const unsigned int PatchLevel = 4, TileLevel = 1;
const unsigned int MapSize = 1u << (PatchLevel + TileLevel);
const unsigned int MaskSize = 64;
const float MaxHeight = 14.0f;
const float Bank = 1.6f;
const float RiverHalfWidth = 4.0f;

float smoothstep(float edge0, float edge1, float x) {
    float t = std::min(1.0f, std::max(0.0f, (x - edge0) / (edge1 - edge0)));
    return t * t * (3.0f - 2.0f * t);
}

// Distance from the river's middle line, measured across the valley.
float riverDistance(float x, float z) { return std::fabs(z - Valley::riverZ(x)); }

// The ground: a flat bank along a channel, rising into rolling hills.
float groundHeight(float x, float z) {
    float d = riverDistance(x, z);
    float hills =
        6.5f + 3.5f * std::sin(x / 9.0f) * std::cos(z / 11.0f) + 2.0f * std::sin((x + 2.0f * z) / 7.0f);
    float h = Bank + smoothstep(3.0f, 26.0f, d) * (hills - 1.0f);
    if (d < 5.0f)
        h -= 1.4f * (1.0f - d / 5.0f) * (1.0f - d / 5.0f);
    return std::min(MaxHeight, std::max(0.0f, h));
}

// The sun shines from the upper left, somewhat from behind the first camera.
const float Sun[3] = {-0.45f, 0.80f, -0.40f};

// Baked light: slopes that face away from the sun are darker than GL's lighting makes
// them, which gives the hills their shape in the distance.
float bakedLight(float x, float z) {
    const float e = 0.5f;
    float nx = groundHeight(x - e, z) - groundHeight(x + e, z);
    float nz = groundHeight(x, z - e) - groundHeight(x, z + e);
    float ny = 2.0f * e;
    float length = std::sqrt(nx * nx + ny * ny + nz * nz);
    float lit = (nx * Sun[0] + ny * Sun[1] + nz * Sun[2]) / length;
    return 0.55f + 0.45f * std::max(0.0f, lit);
}

// World coordinates of a tile's map pixel: maps span their tile edge to edge.
struct TilePixels {
    float x0, z0, step;
    TilePixels(const Terrain::Tile& tile, unsigned int size)
        : x0(tile.getPosX() * TileSize - Valley::HalfSize), z0(tile.getPosY() * TileSize - Valley::HalfSize),
          step(TileSize / float(size - 1)) {}
    float x(int column) const { return x0 + column * step; }
    float z(int row) const { return z0 + row * step; }
};

SharedPtr<TextureSource> noise(Color base, float variation, int seed) {
    return makeImage(128, 128, Color::Rgb, [&](int x, int y, float* c) {
        // Two octaves of grain: fine speckle over soft blotches.
        float g = 0.6f * grain(x, y, seed) + 0.4f * grain(x / 8, y / 8, seed + 1);
        float shade = 1.0f - variation + 2.0f * variation * g;
        c[0] = base.r * shade;
        c[1] = base.g * shade;
        c[2] = base.b * shade;
    });
}

SharedPtr<TextureSource> mask(const TilePixels& at, const std::function<float(float x, float z)>& weight) {
    return makeImage(MaskSize, MaskSize, Color::Luminance,
                     [&](int x, int y, float* c) { c[0] = weight(at.x(x), at.z(y)); });
}

}  // namespace

float Valley::riverZ(float x) { return 12.0f * std::sin(x / 18.0f) + 4.0f * std::sin(x / 7.0f + 1.0f); }

float Valley::waterLevel() { return 1.3f; }

Valley::Valley(Nodes& nodes, Branch& root)
    : mTerrain(nodes.keep(new Terrain(Tiles, Tiles))), mRiver(nodes.keep(new Water("river"))) {
    TransformationNode& land = place(nodes, root, -HalfSize, 0.0f, -HalfSize);
    land.setChild(mTerrain);
    buildTerrain();
    TransformationNode& water = place(nodes, root, 0, 0, 0);
    water.setChild(mRiver);
    buildRiver();

    // The sky: a box around everything, in the fog's own colour.
    TransformationNode& sky = place(nodes, root, 0, 0, 0);
    shape(nodes, sky, makeBox(150, 150, 150, true), unlitMaterial(Color(0.16f, 0.42f, 0.55f), false));

    TransformationNode& sun = place(nodes, root, 0, 0, 0);
    sun.rotateY(std::atan2(-Sun[0], -Sun[2]), true);
    sun.rotateX(-std::asin(Sun[1]), true);
    light(nodes, sun, Light::Directional, Color(0.95f, 0.90f, 0.78f));
}

void Valley::buildTerrain() {
    mTerrain.initializeTerrain(PatchLevel, TileLevel, TileSize);
    for (unsigned int y = 0; y < Tiles; ++y)
        for (unsigned int x = 0; x < Tiles; ++x) {
            Terrain::Tile& tile = *mTerrain.getTile(x, y);
            paintTile(tile);
            tile.setEnabled(true);
            tile.updateTile();
        }
}

void Valley::paintTile(Terrain::Tile& tile) {
    // Shared by every tile: the textures repeat across tile borders without a seam.
    static const SharedPtr<TextureSource> earth = noise(Color(0.46f, 0.36f, 0.25f), 0.20f, 1);
    static const SharedPtr<TextureSource> grass = noise(Color(0.33f, 0.52f, 0.20f), 0.25f, 2);
    static const SharedPtr<TextureSource> sand = noise(Color(0.86f, 0.78f, 0.56f), 0.10f, 3);
    static const SharedPtr<TextureSource> rock = noise(Color(0.52f, 0.51f, 0.50f), 0.30f, 4);

    TilePixels heights(tile, MapSize);
    tile.setMaxHeight(MaxHeight);
    tile.load(
        makeImage(
            MapSize, MapSize, Color::Luminance,
            [&](int x, int y, float* c) { c[0] = groundHeight(heights.x(x), heights.z(y)) / MaxHeight; },
            true),
        0, 0);

    TilePixels masks(tile, MaskSize);
    tile.setBaseMap(earth, 6.0f);
    tile.addTextureLayer(grass,
                         mask(masks,
                              [](float x, float z) {
                                  return smoothstep(4.0f, 7.0f, riverDistance(x, z)) *
                                         (1.0f - smoothstep(8.0f, 11.0f, groundHeight(x, z)));
                              }),
                         4.0f);
    tile.addTextureLayer(
        sand,
        mask(masks, [](float x, float z) { return 1.0f - smoothstep(4.0f, 6.5f, riverDistance(x, z)); }),
        3.0f);
    // Rock where the slope map says the ground is steep.
    SharedPtr<TextureSource> slopes = tile.getSlopeMap();
    const TextureInfo& slopeInfo = slopes->getTextureInfo();
    tile.addTextureLayer(
        rock,
        makeImage(slopeInfo.getWidth(), slopeInfo.getHeight(), Color::Luminance,
                  [&](int x, int y, float* c) {
                      float up = *static_cast<const unsigned char*>(slopes->getPixel(x, y, 0)) / 255.0f;
                      c[0] = smoothstep(0.93f, 0.80f, up);
                  }),
        5.0f);
    tile.setLightMap(mask(masks, bakedLight), 1.0f, 0.0f);
}

// The river: a cross-section line every two units along its middle line, flowing
// towards +x.
void Valley::buildRiver() {
    const float step = 2.0f, speed = 1.6f;
    for (float x = -HalfSize; x <= HalfSize + 0.01f; x += step) {
        float dz = (riverZ(x + 0.1f) - riverZ(x - 0.1f)) / 0.2f;
        float length = std::sqrt(1.0f + dz * dz);
        // Across the flow, in the x-z plane.
        float ax = -dz / length * RiverHalfWidth, az = 1.0f / length * RiverHalfWidth;
        float z = riverZ(x), y = waterLevel();
        TVector<float, 4> start(x - ax, y, z - az, 1.0f), end(x + ax, y, z + az, 1.0f);
        TVector<float, 3> flow(speed / length, 0.0f, speed * dz / length);
        mRiver.addQuad(start, end, flow);
    }
    mRiver.setTerrain(mTerrain);
}

Camp::Camp(Nodes& nodes, Branch& root, Valley& valley) : mCrates(nodes.keep(new Branch())) {
    root.attachChild(mCrates);
    const float x = 6.0f;
    mCampfire = valley.getTerrain().getSurfacePoint(Point(x, 0.0f, Valley::riverZ(x) - 9.0f));
    SharedPtr<Geometry> crate = makeBox(0.8f, 0.8f, 0.8f);
    SharedPtr<Material> wood = texturedMaterial(makeCrateTexture(128));
    // Offsets from the fire; the third crate sits on the first two.
    const float crates[][3] = {
        {-3.0f, 0.0f, -1.5f}, {-3.2f, 0.0f, 0.2f}, {-3.1f, 1.6f, -0.6f}, {2.5f, 0.0f, -2.0f}};
    // The fire's glow.
    TransformationNode& glow = place(nodes, root, mCampfire[0], mCampfire[1] + 1.5f, mCampfire[2]);
    light(nodes, glow, Light::PointLight, Color(1.0f, 0.55f, 0.2f)).setLinearAttenuation(0.25f);
    for (const float* c : crates) {
        Point ground =
            valley.getTerrain().getSurfacePoint(Point(mCampfire[0] + c[0], 0.0f, mCampfire[2] + c[2]));
        shape(nodes, place(nodes, mCrates, ground[0], ground[1] + 0.75f + c[1], ground[2]), crate, wood);
    }
}

}  // namespace Showcase
