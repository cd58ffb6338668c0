#pragma once

#include "foundation/SharedPtr.h"
#include "velun_export.h"

namespace Velun {

class BoundingVolume;
class Geometry;
class Material;

// What the renderer draws: anything with geometry, materials by slot and a local
// bounding volume. Drawables are leaves of node type TypeObject below an ObjectNode;
// a slot without a material of its own falls back on the object's default material.
class VELUN_EXPORT Drawable {
public:
    virtual ~Drawable();

    // The material of a slot (a group's material index), or null.
    virtual Dorvan::SharedPtr<Material> const getMaterial(unsigned int index) const = 0;
    virtual Dorvan::SharedPtr<Material> getMaterial(unsigned int index) = 0;
    // What is drawn; the argument is reserved and renderers pass 0. Null: nothing to draw.
    virtual Dorvan::SharedPtr<Geometry> const getGeometry(int index) const = 0;
    virtual Dorvan::SharedPtr<Geometry> getGeometry(int index) = 0;
    // The volume for collisions; none by default.
    virtual BoundingVolume const* getPhysicsVolume() const;
    // The volume for culling, in local coordinates, or null.
    virtual BoundingVolume const* getBoundingVolume() const = 0;
};

}  // namespace Velun
