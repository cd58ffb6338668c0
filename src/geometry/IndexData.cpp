#include "geometry/IndexData.h"

#include <cstdint>

namespace Velun {

IndexData::IndexData()
    : AbstractGeometryData(true), mCount(0), mCapacity(0), mGrowth(0), mIndexType(DataType::UnsignedInt) {}

IndexData::IndexData(const IndexData& other) = default;

IndexData::~IndexData() {}

IndexData& IndexData::operator=(const IndexData& other) = default;

const void* IndexData::getIndexList() const { return mIndexList.get(); }

unsigned int IndexData::getCount() const { return mCount; }

DataType::Type IndexData::getIndexType() const { return mIndexType; }

void IndexData::setIndexType(DataType::Type type) { mIndexType = type; }

void IndexData::initialize(int capacity, int growth) {
    mIndexList.setNull();
    mCount = 0;
    mGrowth = growth > 0 ? static_cast<unsigned int>(growth) : 0;
    mCapacity = capacity > 0 ? static_cast<unsigned int>(capacity) : 0;
    mIndexList.alloc(DataType::getSize(mIndexType) * mCapacity);
}

void IndexData::setGrowth(int growth) { mGrowth = growth > 0 ? static_cast<unsigned int>(growth) : 0; }

void IndexData::deleteData() { mIndexList.setNull(); }

unsigned int IndexData::addIndex(unsigned int value) {
    ++mCount;
    if (mIndexList.isNull())
        return 0;
    if (mCount > mCapacity) {
        mCapacity += mGrowth > 0 ? mGrowth : 1;
        mIndexList.resize(DataType::getSize(mIndexType) * mCapacity);
    }
    store(mCount - 1, value);
    return mCount - 1;
}

bool IndexData::setIndex(unsigned int position, unsigned int value) {
    if (position >= mCount)
        return false;
    return store(position, value);
}

bool IndexData::store(unsigned int position, unsigned int value) {
    unsigned int size = DataType::getSize(mIndexType);
    if (size == 0 || mIndexList.isNull() || (position + 1) * size > mIndexList.getByteSize())
        return false;
    void* list = mIndexList.get();
    switch (mIndexType) {
    case DataType::UnsignedInt:
        static_cast<std::uint32_t*>(list)[position] = value;
        break;
    case DataType::Int:
        static_cast<std::int32_t*>(list)[position] = static_cast<std::int32_t>(value);
        break;
    case DataType::UnsignedShort:
        static_cast<std::uint16_t*>(list)[position] = static_cast<std::uint16_t>(value);
        break;
    case DataType::Short:
        static_cast<std::int16_t*>(list)[position] = static_cast<std::int16_t>(value);
        break;
    case DataType::UnsignedByte:
        static_cast<std::uint8_t*>(list)[position] = static_cast<std::uint8_t>(value);
        break;
    case DataType::Byte:
        static_cast<std::int8_t*>(list)[position] = static_cast<std::int8_t>(value);
        break;
    default:
        return false;
    }
    return true;
}

unsigned int IndexData::getIndex(unsigned int position) const {
    unsigned int size = DataType::getSize(mIndexType);
    if (position >= mCount || size == 0 || mIndexList.isNull() ||
        (position + 1) * size > mIndexList.getByteSize())
        return 0;
    const void* list = mIndexList.get();
    switch (mIndexType) {
    case DataType::UnsignedInt:
        return static_cast<const std::uint32_t*>(list)[position];
    case DataType::Int:
        return static_cast<unsigned int>(static_cast<const std::int32_t*>(list)[position]);
    case DataType::UnsignedShort:
        return static_cast<const std::uint16_t*>(list)[position];
    case DataType::Short:
        return static_cast<unsigned int>(static_cast<const std::int16_t*>(list)[position]);
    case DataType::UnsignedByte:
        return static_cast<const std::uint8_t*>(list)[position];
    case DataType::Byte:
        return static_cast<unsigned int>(static_cast<const std::int8_t*>(list)[position]);
    default:
        return 0;
    }
}

}  // namespace Velun
