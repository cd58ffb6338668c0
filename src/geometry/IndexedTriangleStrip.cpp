#include "geometry/IndexedTriangleStrip.h"

namespace Velun {

IndexedTriangleStrip::IndexedTriangleStrip(int capacity) : IndexElementData(TriangleStrip) {
    getIndexList().initialize(capacity, 12);
}

IndexedTriangleStrip::~IndexedTriangleStrip() {}

void IndexedTriangleStrip::addVertice(unsigned int index) { getIndexList().addIndex(index); }

}  // namespace Velun
