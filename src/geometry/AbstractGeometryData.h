#pragma once

#include <cstdint>

#include "geometry/DataSet.h"
#include "velun_export.h"

namespace Velun {

// The identifier, bufferable flag and modification stamp shared by VertexData and
// IndexData. Filling data never stamps it: a producer that changes data already drawn
// calls setModified when it is done, and renderers upload again through hasChanged.
// A copy is a new data set: it gets its own identifier and no per-renderer data, and
// keeps the source's stamp.
class VELUN_EXPORT AbstractGeometryData : public virtual DataSet {
public:
    explicit AbstractGeometryData(bool bufferable);
    AbstractGeometryData(const AbstractGeometryData& other);
    ~AbstractGeometryData() override;

    // Takes the bufferable flag and stamp; the identifier stays this set's own.
    AbstractGeometryData& operator=(const AbstractGeometryData& other);

    std::uint64_t getId() const override;
    bool isBufferable() const override;
    // True when the set was stamped (stamp above 0) at or after `timestamp`. A set that
    // was never stamped never reports a change.
    bool hasChanged(std::int64_t timestamp) const override;

    // Stamps the set with the engine's current timestamp.
    void setModified();
    std::int64_t getModifiedTimestamp() const;

private:
    std::uint64_t mId;
    bool mBufferable;
    std::int64_t mModified;
};

}  // namespace Velun
