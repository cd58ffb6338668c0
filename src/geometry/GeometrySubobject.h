#pragma once

#include <string>

#include "foundation/LinkedMap.h"
#include "foundation/SharedPtr.h"
#include "geometry/Drawable.h"
#include "geometry/Geometry.h"
#include "material/Material.h"
#include "scene/Leaf.h"
#include "velun_export.h"

namespace Velun {

// One drawable part of an object: a leaf that shows a shared Geometry, with materials
// of its own by slot that override the object's defaults for this instance only. Its
// bounding volume is the geometry's, so the update pass gives it a world box.
class VELUN_EXPORT GeometrySubobject : public Leaf, public Drawable {
public:
    GeometrySubobject();
    explicit GeometrySubobject(std::string const& name);
    GeometrySubobject(std::string const& name, std::string const& uniqueName);
    ~GeometrySubobject() override;

    // Replaces the geometry (the int is reserved) and marks the node, so that the next
    // update pass refreshes its world volume. The node registers with the geometry, which
    // marks it again whenever its volume changes.
    void setGeometry(Dorvan::SharedPtr<Geometry> geometry, int index);
    Dorvan::SharedPtr<Geometry> const getGeometry(int index) const override;
    Dorvan::SharedPtr<Geometry> getGeometry(int index) override;

    // Replaces the material of a slot.
    void setMaterial(unsigned int index, Dorvan::SharedPtr<Material> material);
    // The subobject's own material of a slot, or null; the lookup adds no entry.
    Dorvan::SharedPtr<Material> const getMaterial(unsigned int index) const override;
    Dorvan::SharedPtr<Material> getMaterial(unsigned int index) override;
    // False, changing nothing, if the slot has no material.
    bool removeMaterial(unsigned int index);

    // The geometry's volumes, null without a geometry.
    BoundingVolume const* getBoundingVolume() const override;
    BoundingVolume const* getPhysicsVolume() const override;

private:
    Dorvan::SharedPtr<Geometry> mGeometry;
    // Mutable for the lookups of the const getter; it never inserts.
    mutable Dorvan::LinkedMap<unsigned int, Dorvan::SharedPtr<Material>> mMaterials;
};

}  // namespace Velun
