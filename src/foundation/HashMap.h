#pragma once

#include <unordered_map>

#include "foundation/StandardMap.h"

namespace Dorvan {

// Unordered map over std::unordered_map, for tables keyed by small integers.
template <class K, class V>
class HashMap : public StandardMap<std::unordered_map<K, V>, K, V> {
public:
    virtual ~HashMap() {}
};

}  // namespace Dorvan
