#include "terrain/TerrainPatch.h"

#include <algorithm>

#include "geometry/GeometryDataGroup.h"
#include "geometry/IndexedTriangleStrip.h"
#include "terrain/TerrainTile.h"

namespace Velun {

Terrain::Patch::Patch(Tile& tile, unsigned int edgeVertices, unsigned int column, unsigned int row,
                      float patchSize)
    : Leaf(TypeObject), mTile(tile), mEdgeVertices(edgeVertices), mColumn(column), mRow(row),
      mPatchSize(patchSize), mGeometry(new GeometryData("terrain patch")) {}

Terrain::Patch::~Patch() {}

Dorvan::SharedPtr<Material> const Terrain::Patch::getMaterial(unsigned int) const {
    return mTile.getMaterial();
}

Dorvan::SharedPtr<Material> Terrain::Patch::getMaterial(unsigned int) { return mTile.getMaterial(); }

Dorvan::SharedPtr<Geometry> const Terrain::Patch::getGeometry(int) const { return mGeometry; }

Dorvan::SharedPtr<Geometry> Terrain::Patch::getGeometry(int) { return mGeometry; }

BoundingVolume const* Terrain::Patch::getBoundingVolume() const { return &mBoundingBox; }

void Terrain::Patch::update() {
    Dorvan::SharedPtr<VertexData> vertices = mTile.getVertexData();
    if (!mTile.isEnabled() || mEdgeVertices < 2 || vertices.isNull())
        return;
    const unsigned int n = mTile.getVertexNumPerEdge();
    if (mGeometry->getElementGroups().size() == 0)
        buildStrip(n);
    mGeometry->setIndexedVertexData(vertices);

    // The box spans the vertices the strip indexes, over the configured height range.
    const float step = mTile.getTerrain().getTileSize() / float(n - 1);
    const unsigned int first = mColumn * mEdgeVertices;
    const unsigned int top = mRow * mEdgeVertices;
    const unsigned int last = std::min(first + mEdgeVertices, n - 1);
    const unsigned int bottom = std::min(top + mEdgeVertices, n - 1);
    mBoundingBox.setEmpty();
    mBoundingBox.merge(Point(float(first) * step, mTile.getOffset(), float(top) * step));
    mBoundingBox.merge(
        Point(float(last) * step, mTile.getOffset() + mTile.getMaxHeight(), float(bottom) * step));
    markModified();
}

// One strip for the whole patch: row after row of cells, joined by repeating the last
// index of a row and the first of the next. Each row has an even count, so every row
// keeps the winding, and the degenerate triangles between rows draw nothing.
void Terrain::Patch::buildStrip(unsigned int n) {
    const unsigned int firstColumn = mColumn * mEdgeVertices;
    const unsigned int firstRow = mRow * mEdgeVertices;
    const unsigned int columns = std::min(firstColumn + mEdgeVertices, n - 1) - firstColumn + 1;
    const unsigned int rows = std::min(firstRow + mEdgeVertices, n - 1) - firstRow;
    const unsigned int count = rows * 2 * columns + 2 * (rows - 1);

    IndexedTriangleStrip* strip = new IndexedTriangleStrip(0);
    IndexData& indices = strip->getIndexList();
    indices.setIndexType(n * n <= 65536u ? DataType::UnsignedShort : DataType::UnsignedInt);
    indices.initialize(int(count), 12);
    for (unsigned int r = 0; r < rows; ++r) {
        unsigned int a = (firstRow + r) * n + firstColumn;
        if (r > 0)
            indices.addIndex(a);
        for (unsigned int c = 0; c < columns; ++c) {
            indices.addIndex(a + c);
            indices.addIndex(a + c + n);
        }
        if (r + 1 < rows)
            indices.addIndex(a + columns - 1 + n);
    }
    mGeometry->createGroup().addElement(*strip);
}

}  // namespace Velun
