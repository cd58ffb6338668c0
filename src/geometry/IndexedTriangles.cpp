#include "geometry/IndexedTriangles.h"

namespace Velun {

IndexedTriangles::IndexedTriangles(int capacity) : IndexElementData(Triangles) {
    getIndexList().initialize(capacity, 6);
}

IndexedTriangles::~IndexedTriangles() {}

void IndexedTriangles::addTriangle(unsigned int a, unsigned int b, unsigned int c) {
    IndexData& list = getIndexList();
    list.addIndex(a);
    list.addIndex(b);
    list.addIndex(c);
}

}  // namespace Velun
