#include "geometry/IndexedQuadStrip.h"

namespace Velun {

IndexedQuadStrip::IndexedQuadStrip(int capacity) : IndexElementData(QuadStrip) {
    getIndexList().initialize(capacity, 12);
}

IndexedQuadStrip::~IndexedQuadStrip() {}

void IndexedQuadStrip::addQuad(unsigned int a, unsigned int b) {
    IndexData& list = getIndexList();
    list.addIndex(a);
    list.addIndex(b);
}

}  // namespace Velun
