#include "geometry/InterleavedVertexDataSet.h"

namespace Velun {

InterleavedVertexDataSet::~InterleavedVertexDataSet() {}

unsigned int InterleavedVertexDataSet::getInterleavedStride() const { return 0; }

}  // namespace Velun
