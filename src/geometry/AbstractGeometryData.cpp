#include "geometry/AbstractGeometryData.h"

#include "core/TimerManager.h"
#include "core/VelunCore.h"

namespace Velun {

AbstractGeometryData::AbstractGeometryData(bool bufferable)
    : mId(createDataSetId()), mBufferable(bufferable), mModified(0) {}

AbstractGeometryData::AbstractGeometryData(const AbstractGeometryData& other)
    : DataSet(other), mId(createDataSetId()), mBufferable(other.mBufferable), mModified(other.mModified) {}

AbstractGeometryData::~AbstractGeometryData() {}

AbstractGeometryData& AbstractGeometryData::operator=(const AbstractGeometryData& other) {
    if (this != &other) {
        DataSet::operator=(other);
        mBufferable = other.mBufferable;
        mModified = other.mModified;
    }
    return *this;
}

std::uint64_t AbstractGeometryData::getId() const { return mId; }

bool AbstractGeometryData::isBufferable() const { return mBufferable; }

bool AbstractGeometryData::hasChanged(std::int64_t timestamp) const {
    return mModified > 0 && mModified >= timestamp;
}

void AbstractGeometryData::setModified() {
    TimerManager* timer = VelunCore::getSingleton().findTimerManager();
    mModified = timer ? timer->getTimestamp() : 0;
}

std::int64_t AbstractGeometryData::getModifiedTimestamp() const { return mModified; }

}  // namespace Velun
