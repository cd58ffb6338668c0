#pragma once

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "material/Material.h"
#include "scene/Matrix.h"
#include "scene/ObjectNode.h"
#include "scene/Point.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

class Branch;
class TransformationNode;

// A height field in the x-z plane of its node (y up), cut into tilesX x tilesY square
// tiles; each tile is cut into patches, the units of drawing and culling.
//
// Making one:
//   Terrain* terrain = new Terrain(2, 2);
//   terrain->initializeTerrain(4, 2, 100.0f);  // 16 x 16 vertices per patch, 4 x 4
//                                              // patches per tile: 64 vertices per tile edge
//   Terrain::Tile* tile = terrain->getTile(0, 0);
//   tile->load(textures.getTextureSource("hills.png"), 0, 0);  // 8- or 16-bit heights
//   tile->setMaxHeight(25.0f);
//   tile->setBaseMap(grass, 10.0f);           // optional maps and layers
//   tile->setEnabled(true);
//   tile->updateTile();                        // builds vertices, material and patches
//   sceneRoot.attachChild(*terrain);
//
// Querying: getSurfacePoint, getNormal, getDistance and getSlope take world points and
// answer in world coordinates, following the terrain node's world transformation (as of
// the last update pass). They read the height maps directly, on the same triangles that
// are drawn: exactly so when a tile's height map has as many pixels per edge as the tile
// has vertices. A point that is not over a tile gets the fixed answers (0, -1, 0) for a
// surface point, (0, 1, 0) for a normal, 0 for a distance and -1 for a slope.
//
// The terrain owns its tiles and the nodes below it; deleting it frees the whole mesh.
class VELUN_EXPORT Terrain : public ObjectNode {
public:
    class Tile;
    class Patch;
    class PointHandle;

    Terrain(unsigned int tilesX = 1, unsigned int tilesY = 1);
    ~Terrain() override;

    Terrain(Terrain const&) = delete;
    Terrain& operator=(Terrain const&) = delete;

    // Makes the tiles, each with (1 << tileLevel)^2 patches of (1 << patchLevel) vertices
    // per edge, so a tile has 1 << (patchLevel + tileLevel) vertices per edge over
    // tileSize units. Runs once; refuses (one error line, nothing made) a tileSize not
    // above 0 or patchLevel + tileLevel above 15.
    void initializeTerrain(unsigned int patchLevel, unsigned int tileLevel, float tileSize);

    unsigned int getTilesX() const { return mTilesX; }
    unsigned int getTilesY() const { return mTilesY; }
    // 0 before initializeTerrain.
    float getTileSize() const { return mTileSize; }
    unsigned int getPatchLevel() const { return mPatchLevel; }
    unsigned int getPatchesPerTileEdge() const { return mPatchesPerTileEdge; }
    float getSizeX() const { return float(mTilesX) * mTileSize; }
    float getSizeY() const { return float(mTilesY) * mTileSize; }

    // Null when out of range or before initializeTerrain.
    Tile* getTile(unsigned int x, unsigned int y) const;
    // The tile under a world point, or null.
    Tile* getTile(Point const& point) const;
    Tile* getTile(PointHandle& handle) const;

    // Tile by tile, and inside a tile row by row.
    unsigned int getPatchCount() const { return mPatches.size(); }
    Patch* getPatch(unsigned int index) const { return mPatches.get(index); }

    // Locates a world point once, for several queries about it.
    PointHandle getPointHandle(Point const& point) const;

    // The ground under (or over) the point, in world coordinates.
    Point getSurfacePoint(PointHandle& handle) const;
    Point getSurfacePoint(Point const& point) const;
    // The unit surface normal in world axes; the bool is reserved and has no effect.
    Dorvan::TVector<float, 3> getNormal(PointHandle& handle, bool smooth = true) const;
    Dorvan::TVector<float, 3> getNormal(Point const& point, bool smooth = true) const;
    // Signed distance from the ground point to the point: negative below ground.
    float getDistance(PointHandle& handle) const;
    float getDistance(Point const& point) const;
    // Angle in radians between the surface normal and the terrain's up axis.
    float getSlope(Point const& point) const;

    // The material drawn for a tile that has none yet, whatever the index.
    Dorvan::SharedPtr<Material> getDefaultMaterial(unsigned int index) override;
    Dorvan::SharedPtr<Material> const getDefaultMaterial(unsigned int index) const;

    // Rebinds the tile's patches to its present vertices and refreshes their boxes;
    // Tile::updateTile does this itself. Out of range does nothing.
    void updateTile(unsigned int x, unsigned int y);

    // The world point in the terrain's own coordinates.
    Point getLocalPoint(Point const& point) const;

private:
    void addTile(unsigned int x, unsigned int y, unsigned int edgeVertices);
    Tile* findTile(float localX, float localZ) const;
    void deleteNodes();
    Dorvan::Matrix<float, 4> const& world() const { return getTransformedNode().getWorldTransformation(); }
    Point toWorld(Point const& local) const;

    Dorvan::SharedPtr<Material> mDefaultMaterial;
    unsigned int mTilesX;
    unsigned int mTilesY;
    float mTileSize;
    float mInverseTileSize;
    unsigned int mPatchLevel;
    unsigned int mPatchesPerTileEdge;
    Dorvan::Vector<Tile*> mTiles;
    Dorvan::Vector<Patch*> mPatches;
    Dorvan::Vector<TransformationNode*> mTileNodes;
    Dorvan::Vector<Branch*> mBranches;
};

// Where a world point lies on a terrain: made by Terrain::getPointHandle, copied freely.
class VELUN_EXPORT Terrain::PointHandle {
    friend class Terrain;

public:
    // The tile over or under the point; null outside the terrain.
    Tile* getTile() { return mTile; }
    Tile const* getTile() const { return mTile; }
    bool inTerrain() const { return mTile != nullptr; }
    // The point in the terrain's coordinates.
    Point const& getLocalPoint() const { return mLocalPoint; }
    // The local point on the ground; the local point itself outside the terrain.
    Point const& getLocalSurfacePoint() const { return mLocalSurfacePoint; }
    // The point as given, in world coordinates.
    Point const& getOrigPoint() const { return mOrigPoint; }
    // Position inside the tile, 0 to 1 along x and z; terrain-wide outside it.
    float getX() const { return mX; }
    float getY() const { return mY; }

private:
    PointHandle(Tile* tile, Point const& local, Point const& surface, Point const& orig, float x, float y)
        : mTile(tile), mLocalPoint(local), mLocalSurfacePoint(surface), mOrigPoint(orig), mX(x), mY(y) {}

    Tile* mTile;
    Point mLocalPoint;
    Point mLocalSurfacePoint;
    Point mOrigPoint;
    float mX;
    float mY;
};

}  // namespace Velun
