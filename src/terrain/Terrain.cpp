#include "terrain/Terrain.h"

#include <sstream>

#include "core/VelunCore.h"
#include "scene/Branch.h"
#include "scene/TransformationNode.h"
#include "terrain/TerrainPatch.h"
#include "terrain/TerrainTile.h"

namespace Velun {

namespace {

// Vertices per tile edge must fit the int count of a vertex array: n^2 <= 2^30.
const unsigned int MaxTileLevels = 15;

// m * p, divided by w; a w of 0 gives the origin. Written out, since every query makes
// two of these.
inline Point transformed(Dorvan::Matrix<float, 4> const& m, Point const& p) {
    if (m.isIdentity())
        return p;
    float const* e = m.m;
    const float x = p[0], y = p[1], z = p[2];
    const float w = e[12] * x + e[13] * y + e[14] * z + e[15];
    if (w == 0.0f)
        return Point();
    const float f = 1.0f / w;
    return Point((e[0] * x + e[1] * y + e[2] * z + e[3]) * f, (e[4] * x + e[5] * y + e[6] * z + e[7]) * f,
                 (e[8] * x + e[9] * y + e[10] * z + e[11]) * f);
}

}  // namespace

Terrain::Terrain(unsigned int tilesX, unsigned int tilesY)
    : mDefaultMaterial(new Material()), mTilesX(tilesX), mTilesY(tilesY), mTileSize(0.0f),
      mInverseTileSize(0.0f), mPatchLevel(0), mPatchesPerTileEdge(0) {
    mDefaultMaterial->setUseMaterialColor(true);
    mDefaultMaterial->setUseDefaultVertexColor(false);
}

Terrain::~Terrain() {
    // Children first, so the mesh leaves the scene once, with the terrain still whole.
    detachChilds();
    deleteNodes();
    for (unsigned int i = 0; i < mTiles.size(); ++i)
        delete mTiles.get(i);
    mTiles.clear();
}

void Terrain::deleteNodes() {
    for (unsigned int i = 0; i < mPatches.size(); ++i)
        delete mPatches.get(i);
    for (unsigned int i = 0; i < mBranches.size(); ++i)
        delete mBranches.get(i);
    for (unsigned int i = 0; i < mTileNodes.size(); ++i)
        delete mTileNodes.get(i);
    mPatches.clear();
    mBranches.clear();
    mTileNodes.clear();
}

void Terrain::initializeTerrain(unsigned int patchLevel, unsigned int tileLevel, float tileSize) {
    if (mTiles.size() > 0)
        return;
    if (!(tileSize > 0.0f) || patchLevel > MaxTileLevels || tileLevel > MaxTileLevels ||
        patchLevel + tileLevel > MaxTileLevels) {
        std::ostringstream text;
        text << "Could not initialise terrain " << getNodeId() << ": tile size " << tileSize
             << " must be above 0 and patch level " << patchLevel << " plus tile level " << tileLevel
             << " at most " << MaxTileLevels;
        VelunCore::getLogger("terrain")->error(text.str());
        return;
    }
    mTileSize = tileSize;
    mInverseTileSize = 1.0f / tileSize;
    mPatchLevel = patchLevel;
    mPatchesPerTileEdge = 1u << tileLevel;
    for (unsigned int y = 0; y < mTilesY; ++y)
        for (unsigned int x = 0; x < mTilesX; ++x)
            addTile(x, y, 1u << patchLevel);
}

// Terrain -> TransformationNode at the tile's corner -> Branch -> the tile's patches.
void Terrain::addTile(unsigned int x, unsigned int y, unsigned int edgeVertices) {
    Tile* tile = new Tile(*this, x, y, edgeVertices * mPatchesPerTileEdge);
    mTiles.add(tile);
    Branch* branch = new Branch();
    TransformationNode* place = new TransformationNode();
    place->setChild(*branch);
    place->translate(float(x) * mTileSize, 0.0f, float(y) * mTileSize, false);
    attachChild(*place);
    mBranches.add(branch);
    mTileNodes.add(place);
    const float patchSize = mTileSize / float(mPatchesPerTileEdge);
    for (unsigned int row = 0; row < mPatchesPerTileEdge; ++row) {
        for (unsigned int column = 0; column < mPatchesPerTileEdge; ++column) {
            Patch* patch = new Patch(*tile, edgeVertices, column, row, patchSize);
            branch->attachChild(*patch);
            mPatches.add(patch);
        }
    }
}

Terrain::Tile* Terrain::getTile(unsigned int x, unsigned int y) const {
    if (x >= mTilesX || y >= mTilesY || mTiles.size() == 0)
        return nullptr;
    return mTiles.get(mTilesX * y + x);
}

Terrain::Tile* Terrain::getTile(Point const& point) const {
    Point local = getLocalPoint(point);
    return findTile(local[0], local[2]);
}

Terrain::Tile* Terrain::getTile(PointHandle& handle) const { return handle.getTile(); }

// Compares before it converts: below 0, at or beyond the size, and NaN lie outside.
inline Terrain::Tile* Terrain::findTile(float localX, float localZ) const {
    if (mTiles.size() == 0)
        return nullptr;
    if (!(localX >= 0.0f && localX < getSizeX() && localZ >= 0.0f && localZ < getSizeY()))
        return nullptr;
    // Rounding can carry a point just below the far edge onto the next column.
    unsigned int x = std::min(static_cast<unsigned int>(localX * mInverseTileSize), mTilesX - 1);
    unsigned int y = std::min(static_cast<unsigned int>(localZ * mInverseTileSize), mTilesY - 1);
    return mTiles.get(mTilesX * y + x);
}

Point Terrain::getLocalPoint(Point const& point) const {
    return transformed(getTransformedNode().getInverseWorldTransformation(), point);
}

Point Terrain::toWorld(Point const& local) const { return transformed(world(), local); }

Terrain::PointHandle Terrain::getPointHandle(Point const& point) const {
    Point local = getLocalPoint(point);
    Tile* tile = findTile(local[0], local[2]);
    float u = local[0] * mInverseTileSize;
    float v = local[2] * mInverseTileSize;
    Point surface = local;
    if (tile) {
        u = std::max(u - float(tile->getPosX()), 0.0f);
        v = std::max(v - float(tile->getPosY()), 0.0f);
        surface[1] = tile->getHeight(u, v);
    } else if (u != u || v != v) {
        u = v = 0.0f;
    }
    return PointHandle(tile, local, surface, point, u, v);
}

Point Terrain::getSurfacePoint(PointHandle& handle) const {
    if (!handle.inTerrain())
        return Point(0.0f, -1.0f, 0.0f);
    return handle.getTile()->getSurfacePoint(handle);
}

Point Terrain::getSurfacePoint(Point const& point) const {
    Point local = transformed(getTransformedNode().getInverseWorldTransformation(), point);
    Tile* tile = findTile(local[0], local[2]);
    if (!tile)
        return Point(0.0f, -1.0f, 0.0f);
    float u = std::max(local[0] * mInverseTileSize - float(tile->getPosX()), 0.0f);
    float v = std::max(local[2] * mInverseTileSize - float(tile->getPosY()), 0.0f);
    local[1] = tile->getHeight(u, v);
    return transformed(world(), local);
}

Dorvan::TVector<float, 3> Terrain::getNormal(PointHandle& handle, bool smooth) const {
    if (!handle.inTerrain())
        return Dorvan::TVector<float, 3>(0.0f, 1.0f, 0.0f);
    return handle.getTile()->getNormal(handle, smooth);
}

Dorvan::TVector<float, 3> Terrain::getNormal(Point const& point, bool smooth) const {
    PointHandle handle = getPointHandle(point);
    return getNormal(handle, smooth);
}

float Terrain::getDistance(PointHandle& handle) const {
    if (!handle.inTerrain())
        return 0.0f;
    return handle.getTile()->getDistance(handle);
}

float Terrain::getDistance(Point const& point) const {
    PointHandle handle = getPointHandle(point);
    return getDistance(handle);
}

float Terrain::getSlope(Point const& point) const {
    Tile* tile = getTile(point);
    if (!tile)
        return -1.0f;
    return tile->getSlope(point);
}

Dorvan::SharedPtr<Material> Terrain::getDefaultMaterial(unsigned int) { return mDefaultMaterial; }

Dorvan::SharedPtr<Material> const Terrain::getDefaultMaterial(unsigned int) const { return mDefaultMaterial; }

void Terrain::updateTile(unsigned int x, unsigned int y) {
    if (!getTile(x, y))
        return;
    const unsigned int perTile = mPatchesPerTileEdge * mPatchesPerTileEdge;
    const unsigned int first = (mTilesX * y + x) * perTile;
    for (unsigned int i = first; i < first + perTile; ++i)
        mPatches.get(i)->update();
}

}  // namespace Velun
