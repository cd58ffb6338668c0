#pragma once

#include <string>

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "geometry/Geometry.h"
#include "geometry/VertexData.h"
#include "velun_export.h"

namespace Velun {

class GeometryDataGroup;

// A geometry that owns its groups (and through them their elements) and its two
// bounding volumes; the shared vertex set is held by SharedPtr and may be shared with
// other geometries.
class VELUN_EXPORT GeometryData : public Geometry {
public:
    GeometryData();
    explicit GeometryData(const std::string& name);
    ~GeometryData() override;

    const std::string& getName() const override;
    void setName(const std::string& name);

    const VertexDataSet* getIndexedDataSet(int) const override;
    VertexDataSet* getIndexedDataSet(int) override;
    Dorvan::SharedPtr<VertexData> getIndexedData(int) const;
    void setIndexedVertexData(Dorvan::SharedPtr<VertexData> data);

    const Dorvan::Vector<GeometryGroup*>& getElementGroups() const override;
    Dorvan::Vector<GeometryGroup*>& getElementGroups() override;
    // Appends a new group whose index is its position, and returns it.
    GeometryDataGroup& createGroup();
    // The group at `index`, or null when out of range or not a GeometryDataGroup.
    GeometryDataGroup* getGroup(unsigned int index);
    // Deletes every group with its elements.
    void clearGroups();

    const BoundingVolume* getPhysicsVolume() const override;
    const BoundingVolume* getBoundingVolume() const override;
    BoundingVolume* getPhysicsVolume();
    BoundingVolume* getBoundingVolume();
    // Take ownership of the volume; a different volume held before is deleted.
    void setBoundingVolume(BoundingVolume* volume);
    void setPhysicsVolume(BoundingVolume* volume);

    GeometryData(const GeometryData&) = delete;
    GeometryData& operator=(const GeometryData&) = delete;

private:
    std::string mName;
    Dorvan::SharedPtr<VertexData> mIndexedData;
    Dorvan::Vector<GeometryGroup*> mGroups;
    BoundingVolume* mBoundingVolume;
    BoundingVolume* mPhysicsVolume;
};

}  // namespace Velun
