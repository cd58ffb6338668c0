#pragma once

#include "foundation/CowMemPtr.h"
#include "geometry/AbstractGeometryData.h"
#include "geometry/IndexDataSet.h"
#include "velun_export.h"

namespace Velun {

// An index list of one integer DataType (UnsignedInt unless set otherwise before
// initialize). Values are converted to the list's type as they are stored; a list of a
// non-integer type counts its entries but stores nothing. The list is copy-on-write,
// so copies are cheap until one side writes. Writing does not stamp the set: call
// setModified after changing a list that was already drawn.
class VELUN_EXPORT IndexData : public AbstractGeometryData, public IndexDataSet {
public:
    IndexData();
    IndexData(const IndexData& other);
    ~IndexData() override;

    IndexData& operator=(const IndexData& other);

    // IndexDataSet
    const void* getIndexList() const override;
    unsigned int getCount() const override;
    DataType::Type getIndexType() const override;

    // Call before initialize.
    void setIndexType(DataType::Type type);

    // Starts over: empty, with room for `capacity` indices, growing by `growth` (at least
    // one) whenever more are added.
    void initialize(int capacity, int growth);
    void deleteData();

    // Appends and returns the position of the new entry. On a list that was never
    // initialised the count still rises but nothing is stored, and 0 is returned.
    unsigned int addIndex(unsigned int value);
    // Overwrites an entry; false when `position` is not below the count or the type
    // stores nothing.
    bool setIndex(unsigned int position, unsigned int value);
    // The entry at `position` as an unsigned int; 0 when out of range.
    unsigned int getIndex(unsigned int position) const;

    unsigned int getCapacity() const { return mCapacity; }
    unsigned int getGrowth() const { return mGrowth; }
    // Indices added per growth from now on (at least one); an owner that appends many
    // indices raises it with the capacity, so filling costs amortised constant time.
    void setGrowth(int growth);

private:
    bool store(unsigned int position, unsigned int value);

    unsigned int mCount;
    unsigned int mCapacity;
    unsigned int mGrowth;
    DataType::Type mIndexType;
    Dorvan::CowMemPtr<void> mIndexList;
};

}  // namespace Velun
