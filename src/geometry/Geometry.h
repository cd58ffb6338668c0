#pragma once

#include <string>
#include <unordered_set>

#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

class BoundingVolume;
class GeometryGroup;
class Node;
class VertexDataSet;

// What a drawable hands to the renderer: a name, an optional vertex set shared by the
// index elements, groups of elements (one material each) and two bounding volumes.
// A renderer draws index elements against getIndexedDataSet(0) and vertex elements from
// their own vertices; without a shared set only vertex elements are drawn.
//
// Nodes that show a geometry register with it (GeometrySubobject does so itself); a
// producer whose bounding volume changes after the first frame (a particle cloud, a
// water ribbon) calls volumeChanged, which marks every registered node changed so that
// the next update pass refreshes its world volume and culling follows the new extent.
class VELUN_EXPORT Geometry {
public:
    Geometry();
    // A copy shows nothing yet: the nodes stay registered with the original only.
    Geometry(const Geometry& other);
    Geometry& operator=(const Geometry& other);
    virtual ~Geometry();

    // A node registered twice is kept once; removing an unknown node does nothing.
    void registerNode(Node& node);
    void unregisterNode(Node& node);
    // Marks every registered node changed.
    void volumeChanged();

    virtual const std::string& getName() const = 0;
    // The shared vertex set, or null. The argument is reserved; renderers pass 0.
    virtual const VertexDataSet* getIndexedDataSet(int) const = 0;
    virtual VertexDataSet* getIndexedDataSet(int) = 0;
    virtual const Dorvan::Vector<GeometryGroup*>& getElementGroups() const = 0;
    virtual Dorvan::Vector<GeometryGroup*>& getElementGroups() = 0;
    virtual const BoundingVolume* getPhysicsVolume() const = 0;
    virtual const BoundingVolume* getBoundingVolume() const = 0;

private:
    // A set: one mesh may be shown by thousands of subobjects that come and go.
    std::unordered_set<Node*> mNodes;
};

}  // namespace Velun
