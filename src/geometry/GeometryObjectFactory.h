#pragma once

#include <string>

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "geometry/Geometry.h"
#include "geometry/ObjectFactory.h"
#include "material/Material.h"
#include "velun_export.h"

namespace Velun {

class GeometryObject;

// A factory for a model of one shared Geometry and its materials: every object it makes
// is a new GeometryObject with one GeometrySubobject showing that geometry, and the
// materials as default materials by their position. Loaders wrap what they parsed in
// one; an application can register one for a geometry built by hand.
class VELUN_EXPORT GeometryObjectFactory : public ObjectFactory {
public:
    GeometryObjectFactory(std::string const& name, Dorvan::SharedPtr<Geometry> geometry,
                          Dorvan::Vector<Dorvan::SharedPtr<Material>> const& materials);
    ~GeometryObjectFactory() override;

    std::string const& getName() const override;
    // A new GeometryObject (null without a geometry), named after the factory.
    ObjectNode* createObject() override;

    Dorvan::SharedPtr<Geometry> getGeometry() const { return mGeometry; }
    Dorvan::Vector<Dorvan::SharedPtr<Material>> const& getMaterials() const { return mMaterials; }

protected:
    // The steps of createObject, for factories that add to each object.
    GeometryObject* buildObject();

private:
    Dorvan::SharedPtr<Geometry> mGeometry;
    Dorvan::Vector<Dorvan::SharedPtr<Material>> mMaterials;
    std::string mName;
};

}  // namespace Velun
