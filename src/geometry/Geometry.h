#pragma once

#include <string>

#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

class BoundingVolume;
class GeometryGroup;
class VertexDataSet;

// What a drawable hands to the renderer: a name, an optional vertex set shared by the
// index elements, groups of elements (one material each) and two bounding volumes.
// A renderer draws index elements against getIndexedDataSet(0) and vertex elements from
// their own vertices; without a shared set only vertex elements are drawn.
class VELUN_EXPORT Geometry {
public:
    virtual ~Geometry();

    virtual const std::string& getName() const = 0;
    // The shared vertex set, or null. The argument is reserved; renderers pass 0.
    virtual const VertexDataSet* getIndexedDataSet(int) const = 0;
    virtual VertexDataSet* getIndexedDataSet(int) = 0;
    virtual const Dorvan::Vector<GeometryGroup*>& getElementGroups() const = 0;
    virtual Dorvan::Vector<GeometryGroup*>& getElementGroups() = 0;
    virtual const BoundingVolume* getPhysicsVolume() const = 0;
    virtual const BoundingVolume* getBoundingVolume() const = 0;
};

}  // namespace Velun
