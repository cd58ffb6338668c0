#include "geometry/GeometryData.h"

#include "geometry/GeometryDataGroup.h"
#include "scene/BoundingVolume.h"

namespace Velun {

GeometryData::GeometryData() : mBoundingVolume(nullptr), mPhysicsVolume(nullptr) {}

GeometryData::GeometryData(const std::string& name)
    : mName(name), mBoundingVolume(nullptr), mPhysicsVolume(nullptr) {}

GeometryData::~GeometryData() {
    if (mBoundingVolume != mPhysicsVolume)
        delete mBoundingVolume;
    delete mPhysicsVolume;
    clearGroups();
}

const std::string& GeometryData::getName() const { return mName; }

void GeometryData::setName(const std::string& name) { mName = name; }

const VertexDataSet* GeometryData::getIndexedDataSet(int) const { return mIndexedData.get(); }

VertexDataSet* GeometryData::getIndexedDataSet(int) { return mIndexedData.get(); }

Dorvan::SharedPtr<VertexData> GeometryData::getIndexedData(int) const { return mIndexedData; }

void GeometryData::setIndexedVertexData(Dorvan::SharedPtr<VertexData> data) {
    if (data != mIndexedData)
        mIndexedData = data;
}

const Dorvan::Vector<GeometryGroup*>& GeometryData::getElementGroups() const { return mGroups; }

Dorvan::Vector<GeometryGroup*>& GeometryData::getElementGroups() { return mGroups; }

GeometryDataGroup& GeometryData::createGroup() {
    GeometryDataGroup* group = new GeometryDataGroup(mGroups.size());
    mGroups.add(group);
    return *group;
}

GeometryDataGroup* GeometryData::getGroup(unsigned int index) {
    if (index >= mGroups.size())
        return nullptr;
    return dynamic_cast<GeometryDataGroup*>(mGroups.get(index));
}

void GeometryData::clearGroups() {
    for (unsigned int i = 0; i < mGroups.size(); ++i)
        delete mGroups.get(i);
    mGroups.clear();
}

const BoundingVolume* GeometryData::getPhysicsVolume() const { return mPhysicsVolume; }

const BoundingVolume* GeometryData::getBoundingVolume() const { return mBoundingVolume; }

BoundingVolume* GeometryData::getPhysicsVolume() { return mPhysicsVolume; }

BoundingVolume* GeometryData::getBoundingVolume() { return mBoundingVolume; }

void GeometryData::setBoundingVolume(BoundingVolume* volume) {
    if (volume != mBoundingVolume && mBoundingVolume != mPhysicsVolume)
        delete mBoundingVolume;
    mBoundingVolume = volume;
}

void GeometryData::setPhysicsVolume(BoundingVolume* volume) {
    if (volume != mPhysicsVolume && mPhysicsVolume != mBoundingVolume)
        delete mPhysicsVolume;
    mPhysicsVolume = volume;
}

}  // namespace Velun
