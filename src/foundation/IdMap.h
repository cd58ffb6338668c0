#pragma once

#include "foundation/OrderedMap.h"

namespace Dorvan {

// OrderedMap that hands out ids: the first id of a new map is 101 and ids are never
// reused. The caller enters each id with `put`. Note the order: value type first.
template <class V, class K>
class IdMap : public OrderedMap<K, V> {
public:
    IdMap() : mFirstId(100), mLastId(100) {}
    ~IdMap() override {}

    virtual K createId() { return ++mLastId; }

    // Ids are not reused, so returning one changes nothing.
    virtual void returnId(K) {}

private:
    K mFirstId;
    K mLastId;
};

}  // namespace Dorvan
