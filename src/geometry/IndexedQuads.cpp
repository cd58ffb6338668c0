#include "geometry/IndexedQuads.h"

namespace Velun {

IndexedQuads::IndexedQuads(int capacity) : IndexElementData(Quads) { getIndexList().initialize(capacity, 8); }

IndexedQuads::~IndexedQuads() {}

void IndexedQuads::addQuad(unsigned int a, unsigned int b, unsigned int c, unsigned int d) {
    IndexData& list = getIndexList();
    list.addIndex(a);
    list.addIndex(b);
    list.addIndex(c);
    list.addIndex(d);
}

}  // namespace Velun
