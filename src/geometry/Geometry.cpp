#include "geometry/Geometry.h"

#include "scene/Node.h"

namespace Velun {

Geometry::Geometry() {}

Geometry::Geometry(const Geometry&) {}

Geometry& Geometry::operator=(const Geometry&) { return *this; }

Geometry::~Geometry() {}

void Geometry::registerNode(Node& node) { mNodes.insert(&node); }

void Geometry::unregisterNode(Node& node) { mNodes.erase(&node); }

void Geometry::volumeChanged() {
    for (Node* node : mNodes)
        node->markModified();
}

}  // namespace Velun
