#pragma once

#include <cstddef>

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "geometry/VertexData.h"
#include "material/Material.h"
#include "scene/Color.h"
#include "terrain/Terrain.h"
#include "texture/Texture.h"
#include "texture/TextureSource.h"
#include "velun_export.h"

namespace Velun {

// One square of a Terrain: a height map and the maps sampled with it, turned by
// updateTile into the vertex grid and the multi-texture material its patches draw.
//
// Heights: a pixel of value 0 lies at the offset, the largest value (255, or 65535 for
// 16-bit maps) at offset + max height. u runs along x and v along z, each 0 to 1 across
// the tile; the map's row 0 lies at z = 0.
//
// Looks, applied at the next updateTile: a colour map gives the vertex colours (grey by
// height without one); the base map is drawn first, repeating every `scale` units; each
// texture layer blends over what lies below it where its mask (red channel, spanning the
// tile) is bright, the first layer's mask sampled at the vertices; a light map multiplies
// the result, its colours scaled and biased. The height queries see a new load at once.
//
// Tiles are made by Terrain::initializeTerrain; the terrain owns them.
class VELUN_EXPORT Terrain::Tile {
    friend class Terrain;

public:
    // A texture that blends in where its mask is bright, repeating every `scale` units.
    class TextureLayer {
    public:
        TextureLayer(Dorvan::SharedPtr<Texture> texture, Dorvan::SharedPtr<Texture> mask, float scale)
            : mTexture(texture), mMask(mask), mScale(scale) {}
        Dorvan::SharedPtr<Texture> getTexture() const { return mTexture; }
        Dorvan::SharedPtr<Texture> getMask() const { return mMask; }
        float getScale() const { return mScale; }

    private:
        Dorvan::SharedPtr<Texture> mTexture;
        Dorvan::SharedPtr<Texture> mMask;
        float mScale;
    };

    virtual ~Tile();

    Tile(Tile const&) = delete;
    Tile& operator=(Tile const&) = delete;

    // Takes the heights from byte `byteOffset` of each pixel of image slice `slice`;
    // 8-bit (UnsignedByte) and 16-bit (UnsignedShort) maps are read. False, keeping the
    // previous map, with one error line, when the map cannot serve.
    bool load(Dorvan::SharedPtr<TextureSource> heightMap, unsigned int byteOffset = 0,
              unsigned int slice = 0);
    // Drops the height, slope and normal maps and the texture layers.
    void unload();

    void setMaxHeight(float maxHeight) { mMaxHeight = maxHeight; }
    float getMaxHeight() const { return mMaxHeight; }
    void setOffset(float offset) { mOffset = offset; }
    float getOffset() const { return mOffset; }
    // Patches take geometry only from an enabled tile.
    bool isEnabled() const { return mEnabled; }
    void setEnabled(bool enabled) { mEnabled = enabled; }
    unsigned int getPosX() const { return mPosX; }
    unsigned int getPosY() const { return mPosY; }
    unsigned int getVertexNumPerEdge() const { return mVertexNumPerEdge; }
    Terrain& getTerrain() const { return mTerrain; }
    Dorvan::SharedPtr<TextureSource> getHeightMap() const { return mHeightMap; }
    Dorvan::SharedPtr<TextureSource> getNormalMap() const { return mNormalMap; }
    Dorvan::SharedPtr<TextureSource> getLightMap() const { return mLightMap; }
    // Made by updateTile; null before.
    Dorvan::SharedPtr<VertexData> getVertexData() { return mVertexData; }
    Dorvan::SharedPtr<VertexData> const getVertexData() const { return mVertexData; }
    Dorvan::SharedPtr<Material> getMaterial() { return mMaterial; }
    Dorvan::SharedPtr<Material> const getMaterial() const { return mMaterial; }

    void setColorMap(Dorvan::SharedPtr<TextureSource> colorMap) { mColorMap = colorMap; }
    // The base map repeats every `scale` world units.
    void setBaseMap(Dorvan::SharedPtr<TextureSource> baseMap, float scale);
    // The light map spans the tile; its colours become colour * scale + offset.
    void setLightMap(Dorvan::SharedPtr<TextureSource> lightMap, float scale, float offset);
    // Returns the layer's position. The mask spans the tile; its red channel says where
    // the texture shows.
    unsigned int addTextureLayer(Dorvan::SharedPtr<TextureSource> texture,
                                 Dorvan::SharedPtr<TextureSource> mask, float scale);
    unsigned int getTextureLayerCount() const { return mTextureLayers.size(); }
    TextureLayer const* getTextureLayer(unsigned int index) const { return mTextureLayers.get(index); }

    // The ground height at (u, v), clamped to the tile; the offset without a height map.
    float getHeight(float u, float v) const;
    // The unit normal in tile axes, with the tile's true steepness.
    Dorvan::TVector<float, 3> getNormal(float u, float v) const;
    // The vertex colour at (u, v) for ground height h (a negative h reads the height).
    Color getColor(float u, float v, float height) const;

    // World-point queries, as Terrain's, for a handle on this tile (the fixed outside
    // answers otherwise).
    Point getSurfacePoint(PointHandle& handle) const;
    Point getSurfacePoint(Point const& point) const;
    Dorvan::TVector<float, 3> getNormal(PointHandle& handle, bool smooth = true) const;
    Dorvan::TVector<float, 3> getNormal(Point const& point, bool smooth = true) const;
    float getDistance(PointHandle& handle) const;
    float getDistance(Point const& point) const;
    // Angle in radians between the tile's normal and its up axis.
    float getSlope(Point const& point) const;

    // A one-channel byte image, n x n, of each vertex's normal y times 255; made on
    // first use after each load.
    Dorvan::SharedPtr<TextureSource> getSlopeMap();

    // Builds the vertex grid and the material from the present maps and binds the
    // tile's patches to them.
    void updateTile();

private:
    // Position of (u, v) on the height map's pixel grid.
    struct Cell {
        unsigned int x0, y0, x1, y1;
        float fx, fy;
    };

    Tile(Terrain& terrain, unsigned int x, unsigned int y, unsigned int vertexNumPerEdge);

    Cell locate(float u, float v) const;
    float relativeHeight(unsigned char const* pixels, unsigned int x, unsigned int y) const;
    Dorvan::TVector<float, 3> texNormal(unsigned char const* pixels, unsigned int x, unsigned int y) const;
    unsigned char const* heightPixels() const;
    bool refuse(std::string const& reason) const;
    Color mapColor(TextureSource const& map, float u, float v) const;
    Dorvan::TVector<float, 3> worldNormal(Dorvan::TVector<float, 3> const& local) const;
    void buildVertices(unsigned int layerCount, bool base, bool tail);
    void buildMaterial(unsigned int layerCount, bool base, bool tail);

    bool mEnabled;
    unsigned int mPosX;
    unsigned int mPosY;
    unsigned int mVertexNumPerEdge;
    float mOffset;
    float mMaxHeight;
    Terrain& mTerrain;
    Dorvan::SharedPtr<TextureSource> mHeightMap;
    Dorvan::SharedPtr<TextureSource> mSlopeMap;
    Dorvan::SharedPtr<TextureSource> mNormalMap;
    Dorvan::SharedPtr<TextureSource> mColorMap;
    Dorvan::SharedPtr<TextureSource> mBaseMap;
    Dorvan::SharedPtr<TextureSource> mLightMap;
    unsigned int mHeightByteOffset;
    unsigned int mHeightSlice;
    float mBaseScale;
    float mLightOffset;
    float mLightScale;
    Dorvan::SharedPtr<VertexData> mVertexData;
    Dorvan::SharedPtr<Material> mMaterial;
    Dorvan::Vector<TextureLayer*> mTextureLayers;
    // The height map's layout, read at load: the pixel data is fetched per query.
    unsigned int mMapWidth;
    unsigned int mMapHeight;
    std::size_t mPixelSize;
    std::size_t mSliceStart;
    bool mWideHeights;
};

}  // namespace Velun
