#pragma once

#include <cstdint>
#include <string>

#include "core/NameMapper.h"
#include "foundation/LinkedMap.h"
#include "foundation/SharedPtr.h"
#include "geometry/Geometry.h"
#include "velun_export.h"

namespace Velun {

class GeometryLoader;

// Hands out data set identifiers and keeps geometries by name, so that parts of an
// application can share one geometry. The registry holds a reference to each geometry
// until the manager ends.
class VELUN_EXPORT GeometryManager {
public:
    GeometryManager();
    virtual ~GeometryManager();

    // A new data set identifier, never 0 and never handed out before; the same sequence
    // as DataSet::createDataSetId.
    std::uint64_t createDataSetId();
    // Identifiers are not reused: does nothing.
    void returnDataSetId(std::uint64_t id);

    // Stores the geometry under the name, replacing an earlier one.
    void registerGeometry(std::string const& name, Dorvan::SharedPtr<Geometry> geometry);
    bool isLoaded(std::string const& name) const;
    // The registered geometry, or null; the lookup adds no entry.
    Dorvan::SharedPtr<Geometry> getGeometry(std::string const& name) const;

    void setGeometryNameMapper(Dorvan::SharedPtr<NameMapper> mapper) { mNameMapper = mapper; }
    Dorvan::SharedPtr<NameMapper> getGeometryNameMapper() const { return mNameMapper; }

    // Reserved: geometries come from object loaders. Keeps nothing and returns 0.
    unsigned int registerGeometryLoader(GeometryLoader& loader);
    // Reserved: registered geometries stay for the life of the manager. Returns false.
    bool unloadGeometry(std::string const& name);

private:
    GeometryManager(const GeometryManager&) = delete;
    GeometryManager& operator=(const GeometryManager&) = delete;

    Dorvan::SharedPtr<NameMapper> mNameMapper;
    mutable Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<Geometry>> mGeometries;
};

}  // namespace Velun
