#include "geometry/GeometryObjectFactory.h"

#include <sstream>

#include "core/VelunCore.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"

namespace Velun {

GeometryObjectFactory::GeometryObjectFactory(std::string const& name, Dorvan::SharedPtr<Geometry> geometry,
                                             Dorvan::Vector<Dorvan::SharedPtr<Material>> const& materials)
    : mGeometry(geometry), mMaterials(materials), mName(name) {}

GeometryObjectFactory::~GeometryObjectFactory() {}

std::string const& GeometryObjectFactory::getName() const { return mName; }

ObjectNode* GeometryObjectFactory::createObject() { return buildObject(); }

GeometryObject* GeometryObjectFactory::buildObject() {
    if (!mGeometry) {
        std::ostringstream text;
        text << "Could not create object " << mName << ": its factory has no geometry";
        VelunCore::getLogger("objectmanager")->error(text.str());
        return nullptr;
    }
    GeometryObject* object = new GeometryObject(mName);
    GeometrySubobject* subobject = new GeometrySubobject(mGeometry->getName());
    subobject->setGeometry(mGeometry, 0);
    object->addSubobject(*subobject);
    for (unsigned int i = 0; i < mMaterials.size(); ++i)
        object->setDefaultMaterial(i, mMaterials.get(i));
    return object;
}

}  // namespace Velun
