#pragma once

#include <map>

#include "foundation/StandardMap.h"

namespace Dorvan {

// Key-sorted map over std::map; begin() and end() walk it in key order.
template <class K, class V>
class LinkedMap : public StandardMap<std::map<K, V>, K, V> {
public:
    ~LinkedMap() override {}
};

}  // namespace Dorvan
