#pragma once

#include <cstdint>

#include "core/ResourceContainer.h"
#include "velun_export.h"

namespace Velun {

// A block of vertex attributes or indices as a renderer reads it. Besides the per-provider
// data of ResourceContainer, a renderer relies on three things: a unique identifier,
// whether the set may live in a GPU buffer, and hasChanged, which tells whether the set
// was modified at or after a stamp (a TimerManager timestamp) the renderer kept from its
// last upload.
class VELUN_EXPORT DataSet : public ResourceContainer {
public:
    ~DataSet() override;

    // A new data set identifier: unique for the life of the process, never reused, the
    // first is 1. Sets that implement this interface over their own storage draw theirs
    // here once, at construction.
    static std::uint64_t createDataSetId();

    virtual std::uint64_t getId() const = 0;
    virtual bool isBufferable() const = 0;
    virtual bool hasChanged(std::int64_t timestamp) const = 0;
};

}  // namespace Velun
