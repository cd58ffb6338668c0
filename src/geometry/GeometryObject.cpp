#include "geometry/GeometryObject.h"

#include <sstream>

#include "core/VelunCore.h"
#include "geometry/GeometrySubobject.h"
#include "scene/TransformationNode.h"

namespace Velun {

GeometryObject::GeometryObject() {}

GeometryObject::GeometryObject(std::string const& name) : ObjectNode(name) {}

GeometryObject::GeometryObject(std::string const& name, std::string const& uniqueName)
    : ObjectNode(name, uniqueName) {}

GeometryObject::~GeometryObject() {
    // Children first, so each part leaves the scene once, with the object still whole.
    detachChilds();
    for (unsigned int i = 0; i < mSubobjects.size(); ++i) {
        GeometrySubobject* subobject = mSubobjects.get(i);
        TransformationNode* node = mTransformations.get(subobject->getNodeId());
        delete subobject;
        delete node;
    }
}

bool GeometryObject::addSubobject(GeometrySubobject& subobject) {
    if (subobject.getParent() || subobject.isAttached()) {
        std::ostringstream text;
        text << "Could not add subobject " << subobject.getNodeId() << " to object " << getNodeId()
             << ": it is part of a scene tree already";
        VelunCore::getLogger("objectmanager")->error(text.str());
        return false;
    }
    TransformationNode* node = new TransformationNode();
    node->setChild(subobject);
    attachChild(*node);
    mTransformations.put(subobject.getNodeId(), node);
    mSubobjects.add(&subobject);
    return true;
}

GeometrySubobject* GeometryObject::removeSubobject(std::uint64_t id) {
    GeometrySubobject* subobject = getSubobject(id);
    if (!subobject)
        return nullptr;
    TransformationNode* node = mTransformations.remove(id);
    mSubobjects.remove(subobject);
    detachChild(node->getNodeId());
    node->detachChild();
    delete node;
    return subobject;
}

GeometrySubobject* GeometryObject::getSubobject(std::uint64_t id) const {
    if (!mTransformations.containsKey(id))
        return nullptr;
    for (unsigned int i = 0; i < mSubobjects.size(); ++i)
        if (mSubobjects.get(i)->getNodeId() == id)
            return mSubobjects.get(i);
    return nullptr;
}

GeometrySubobject* GeometryObject::getSubobjectAt(unsigned int position) const {
    return position < mSubobjects.size() ? mSubobjects.get(position) : 0;
}

Transformation* GeometryObject::getTransformation(std::uint64_t id) const {
    if (!mTransformations.containsKey(id))
        return nullptr;
    return mTransformations.get(id);
}

Transformation* GeometryObject::getTransformation(GeometrySubobject& subobject) const {
    return getTransformation(subobject.getNodeId());
}

void GeometryObject::setDefaultMaterial(unsigned int index, Dorvan::SharedPtr<Material> material) {
    mDefaultMaterials.put(index, material);
}

Dorvan::SharedPtr<Material> GeometryObject::getDefaultMaterial(unsigned int index) {
    Dorvan::SharedPtr<Material> const* material = mDefaultMaterials.find(index);
    return material ? *material : Dorvan::SharedPtr<Material>();
}

Dorvan::SharedPtr<Material> const GeometryObject::getDefaultMaterial(unsigned int index) const {
    Dorvan::SharedPtr<Material> const* material = mDefaultMaterials.find(index);
    return material ? *material : Dorvan::SharedPtr<Material>();
}

bool GeometryObject::removeDefaultMaterial(unsigned int index) {
    if (!mDefaultMaterials.containsKey(index))
        return false;
    mDefaultMaterials.remove(index);
    return true;
}

}  // namespace Velun
