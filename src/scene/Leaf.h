#pragma once

#include "scene/BoundingVolume.h"
#include "scene/Node.h"
#include "velun_export.h"

namespace Velun {

// A node without children: cameras, lights, sounds, drawable pieces.
class VELUN_EXPORT Leaf : public Node {
public:
    ~Leaf() override;

    // The leaf's own volume in local coordinates, or null for none; the update pass
    // turns it into the world volume.
    virtual BoundingVolume const* getBoundingVolume() const = 0;

protected:
    explicit Leaf(NodeType type);
    Leaf(NodeType type, std::string const& name);
    Leaf(NodeType type, std::string const& name, std::string const& uniqueName);
};

}  // namespace Velun
