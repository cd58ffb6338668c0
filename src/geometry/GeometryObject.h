#pragma once

#include <cstdint>
#include <string>

#include "foundation/LinkedMap.h"
#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "material/Material.h"
#include "scene/ObjectNode.h"
#include "velun_export.h"

namespace Velun {

class GeometrySubobject;
class Transformation;
class TransformationNode;

// A model in the scene: an object node whose children are TransformationNodes, each
// placing one GeometrySubobject, so each part can be moved relative to the rest. The
// object owns the transformation nodes and the subobjects added to it and deletes them
// when it ends; its default materials by slot serve every subobject that has no material
// of its own for a slot.
class VELUN_EXPORT GeometryObject : public ObjectNode {
public:
    GeometryObject();
    explicit GeometryObject(std::string const& name);
    GeometryObject(std::string const& name, std::string const& uniqueName);
    ~GeometryObject() override;

    // Places the subobject under a new TransformationNode attached to this object, and
    // takes ownership of it (it must come from new). False, leaving the subobject to the
    // caller, if it has a parent or a scene already.
    bool addSubobject(GeometrySubobject& subobject);
    // Detaches the subobject, deletes its TransformationNode and hands the subobject
    // back to the caller; null for an id that is no subobject of this object.
    GeometrySubobject* removeSubobject(std::uint64_t id);

    // By the subobject's node id; null for an unknown id.
    GeometrySubobject* getSubobject(std::uint64_t id) const;
    unsigned int getSubobjectCount() const { return mSubobjects.size(); }
    // In the order of adding; null when out of range.
    GeometrySubobject* getSubobjectAt(unsigned int position) const;

    // The transformation that places a subobject within the object; null for a
    // subobject of another object.
    Transformation* getTransformation(std::uint64_t id) const;
    Transformation* getTransformation(GeometrySubobject& subobject) const;

    // Replaces the default material of a slot.
    void setDefaultMaterial(unsigned int index, Dorvan::SharedPtr<Material> material);
    // The default material of a slot, or null; the lookup adds no entry.
    Dorvan::SharedPtr<Material> getDefaultMaterial(unsigned int index) override;
    Dorvan::SharedPtr<Material> const getDefaultMaterial(unsigned int index) const;
    // False, changing nothing, if the slot has no default material.
    bool removeDefaultMaterial(unsigned int index);

private:
    // Keyed by the subobject's node id. Mutable like the materials: const lookups only.
    mutable Dorvan::LinkedMap<std::uint64_t, TransformationNode*> mTransformations;
    mutable Dorvan::LinkedMap<unsigned int, Dorvan::SharedPtr<Material>> mDefaultMaterials;
    // The owned subobjects in the order they were added.
    Dorvan::Vector<GeometrySubobject*> mSubobjects;
};

}  // namespace Velun
