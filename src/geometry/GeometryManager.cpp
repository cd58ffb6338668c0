#include "geometry/GeometryManager.h"

#include "geometry/DataSet.h"

namespace Velun {

GeometryManager::GeometryManager() {}

GeometryManager::~GeometryManager() {
    mGeometries.clear();
    mNameMapper.release();
}

std::uint64_t GeometryManager::createDataSetId() {
    // One counter with the data sets themselves, so identifiers from either are unique.
    return DataSet::createDataSetId();
}

void GeometryManager::returnDataSetId(std::uint64_t) {}

void GeometryManager::registerGeometry(std::string const& name, Dorvan::SharedPtr<Geometry> geometry) {
    mGeometries.put(name, geometry);
}

bool GeometryManager::isLoaded(std::string const& name) const { return mGeometries.containsKey(name); }

Dorvan::SharedPtr<Geometry> GeometryManager::getGeometry(std::string const& name) const {
    if (!mGeometries.containsKey(name))
        return Dorvan::SharedPtr<Geometry>();
    return mGeometries.get(name);
}

unsigned int GeometryManager::registerGeometryLoader(GeometryLoader&) { return 0; }

bool GeometryManager::unloadGeometry(std::string const&) { return false; }

}  // namespace Velun
