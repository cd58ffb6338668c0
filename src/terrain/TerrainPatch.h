#pragma once

#include "foundation/SharedPtr.h"
#include "geometry/Drawable.h"
#include "geometry/GeometryData.h"
#include "scene/BoundingBox.h"
#include "scene/Leaf.h"
#include "terrain/Terrain.h"
#include "velun_export.h"

namespace Velun {

// A square part of a tile, drawn as one triangle strip into the tile's vertex grid and
// culled by its own box. Patches reach from their first vertex row and column up to the
// first ones of the next patch, so a tile is drawn without gaps. Made by the terrain.
class VELUN_EXPORT Terrain::Patch : public Leaf, public Drawable {
    friend class Terrain;

public:
    ~Patch() override;

    // The tile's material, whatever the index; null before the tile's first updateTile.
    Dorvan::SharedPtr<Material> const getMaterial(unsigned int index) const override;
    Dorvan::SharedPtr<Material> getMaterial(unsigned int index) override;
    // Without groups until the patch's tile was enabled and updated.
    Dorvan::SharedPtr<Geometry> const getGeometry(int index) const override;
    Dorvan::SharedPtr<Geometry> getGeometry(int index) override;
    // In tile coordinates, over the tile's configured height range; unset (empty) until
    // the patch got geometry.
    BoundingVolume const* getBoundingVolume() const override;

    Tile& getTerrainTile() const { return mTile; }
    unsigned int getColumn() const { return mColumn; }
    unsigned int getRow() const { return mRow; }
    unsigned int getEdgeVertices() const { return mEdgeVertices; }

    Patch(Patch const&) = delete;
    Patch& operator=(Patch const&) = delete;

private:
    Patch(Tile& tile, unsigned int edgeVertices, unsigned int column, unsigned int row, float patchSize);

    // Binds the patch to its tile's present vertices (building the strip once) and
    // resizes the box; nothing while the tile is disabled.
    void update();
    void buildStrip(unsigned int tileEdge);

    Tile& mTile;
    unsigned int mEdgeVertices;
    unsigned int mColumn;
    unsigned int mRow;
    float mPatchSize;
    Dorvan::SharedPtr<GeometryData> mGeometry;
    BoundingBox mBoundingBox;
};

}  // namespace Velun
