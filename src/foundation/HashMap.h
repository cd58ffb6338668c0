#pragma once

#include <unordered_map>

#include "foundation/Collection.h"

namespace Dorvan {

// Unordered map over std::unordered_map, for tables keyed by small integers. Like
// LinkedMap, `operator[]` and `get` insert a default value for a missing key.
template <class K, class V>
class HashMap : public Map<K, V> {
public:
    typedef typename std::unordered_map<K, V>::const_iterator const_iterator;

    HashMap() {}
    virtual ~HashMap() {}

    virtual unsigned int size() const { return static_cast<unsigned int>(mMap.size()); }
    virtual bool isEmpty() const { return mMap.empty(); }
    virtual void clear() { mMap.clear(); }

    virtual V operator[](K key) { return mMap[key]; }

    virtual V put(K key, V value) {
        mMap[key] = value;
        return value;
    }

    // Erases the entry and returns its value; a missing key gives the default value.
    virtual V remove(K key) {
        typename std::unordered_map<K, V>::iterator it = mMap.find(key);
        if (it == mMap.end())
            return V();
        V value = it->second;
        mMap.erase(it);
        return value;
    }

    virtual V get(K key) { return mMap[key]; }
    virtual bool containsKey(K key) const { return mMap.find(key) != mMap.end(); }

    virtual bool containsValue(V value) const {
        for (const_iterator it = mMap.begin(); it != mMap.end(); ++it)
            if (it->second == value)
                return true;
        return false;
    }

    const_iterator begin() const { return mMap.begin(); }
    const_iterator end() const { return mMap.end(); }

private:
    std::unordered_map<K, V> mMap;
};

}  // namespace Dorvan
