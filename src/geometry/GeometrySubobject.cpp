#include "geometry/GeometrySubobject.h"

namespace Velun {

GeometrySubobject::GeometrySubobject() : Leaf(TypeObject) {}

GeometrySubobject::GeometrySubobject(std::string const& name) : Leaf(TypeObject, name) {}

GeometrySubobject::GeometrySubobject(std::string const& name, std::string const& uniqueName)
    : Leaf(TypeObject, name, uniqueName) {}

GeometrySubobject::~GeometrySubobject() {
    if (mGeometry)
        mGeometry->unregisterNode(*this);
}

void GeometrySubobject::setGeometry(Dorvan::SharedPtr<Geometry> geometry, int) {
    if (mGeometry)
        mGeometry->unregisterNode(*this);
    mGeometry = geometry;
    if (mGeometry)
        mGeometry->registerNode(*this);
    markModified();
}

Dorvan::SharedPtr<Geometry> const GeometrySubobject::getGeometry(int) const { return mGeometry; }

Dorvan::SharedPtr<Geometry> GeometrySubobject::getGeometry(int) { return mGeometry; }

void GeometrySubobject::setMaterial(unsigned int index, Dorvan::SharedPtr<Material> material) {
    mMaterials.put(index, material);
}

Dorvan::SharedPtr<Material> const GeometrySubobject::getMaterial(unsigned int index) const {
    if (!mMaterials.containsKey(index))
        return Dorvan::SharedPtr<Material>();
    return mMaterials.get(index);
}

Dorvan::SharedPtr<Material> GeometrySubobject::getMaterial(unsigned int index) {
    if (!mMaterials.containsKey(index))
        return Dorvan::SharedPtr<Material>();
    return mMaterials.get(index);
}

bool GeometrySubobject::removeMaterial(unsigned int index) {
    if (!mMaterials.containsKey(index))
        return false;
    mMaterials.remove(index);
    return true;
}

BoundingVolume const* GeometrySubobject::getBoundingVolume() const {
    return mGeometry ? mGeometry->getBoundingVolume() : nullptr;
}

BoundingVolume const* GeometrySubobject::getPhysicsVolume() const {
    return mGeometry ? mGeometry->getPhysicsVolume() : nullptr;
}

}  // namespace Velun
