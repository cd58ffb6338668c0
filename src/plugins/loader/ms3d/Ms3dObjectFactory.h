#pragma once

#include <string>

#include "geometry/GeometryObjectFactory.h"
#include "velun_export.h"

namespace Velun {

// What Ms3dObjectLoader made of one MS3D file: every object it creates is a new
// GeometryObject with one GeometrySubobject over the model's one shared GeometryData,
// and the file's materials as default materials in file order.
class VELUN_EXPORT Ms3dObjectFactory : public GeometryObjectFactory {
public:
    Ms3dObjectFactory(std::string const& name, Dorvan::SharedPtr<Geometry> geometry,
                      Dorvan::Vector<Dorvan::SharedPtr<Material>> const& materials);
    ~Ms3dObjectFactory() override;
};

}  // namespace Velun
