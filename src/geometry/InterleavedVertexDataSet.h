#pragma once

#include "geometry/VertexDataSet.h"
#include "velun_export.h"

namespace Velun {

// Vertex attributes stored interleaved in one block. The engine's renderer does not look
// for it; it is there for applications that keep their vertices this way.
class VELUN_EXPORT InterleavedVertexDataSet : public VertexDataSet {
public:
    ~InterleavedVertexDataSet() override;

    // Start of the interleaved block.
    virtual const void* getInterleavedData() const = 0;
    // Bytes from one vertex to the next; 0 means tightly packed.
    virtual unsigned int getInterleavedStride() const;
};

}  // namespace Velun
