#include "plugins/loader/ms3d/Ms3dObjectFactory.h"

namespace Velun {

Ms3dObjectFactory::Ms3dObjectFactory(std::string const& name, Dorvan::SharedPtr<Geometry> geometry,
                                     Dorvan::Vector<Dorvan::SharedPtr<Material>> const& materials)
    : GeometryObjectFactory(name, geometry, materials) {}

Ms3dObjectFactory::~Ms3dObjectFactory() {}

}  // namespace Velun
