#pragma once

#include "foundation/Collection.h"

namespace Dorvan {

// The map operations over a standard associative container (std::map or
// std::unordered_map). Lookups through `operator[]` and `get` insert a default value
// for a missing key; test with `containsKey` first where that matters.
template <class Container, class K, class V>
class StandardMap : public Map<K, V> {
public:
    typedef typename Container::const_iterator const_iterator;

    ~StandardMap() override {}

    unsigned int size() const override { return static_cast<unsigned int>(mMap.size()); }
    bool isEmpty() const override { return mMap.empty(); }
    void clear() override { mMap.clear(); }

    V operator[](K key) override { return mMap[key]; }

    V put(K key, V value) override {
        mMap[key] = value;
        return value;
    }

    // Erases the entry and returns its value; a missing key gives the default value.
    V remove(K key) override {
        typename Container::iterator it = mMap.find(key);
        if (it == mMap.end())
            return V();
        V value = it->second;
        mMap.erase(it);
        return value;
    }

    V get(K key) override { return mMap[key]; }
    bool containsKey(K key) const override { return mMap.find(key) != mMap.end(); }
    // The value of a key, or null, in one lookup and without entering the key.
    V const* find(K key) const {
        const_iterator it = mMap.find(key);
        return it == mMap.end() ? nullptr : &it->second;
    }

    bool containsValue(V value) const override {
        for (const_iterator it = mMap.begin(); it != mMap.end(); ++it)
            if (it->second == value)
                return true;
        return false;
    }

    // Walks the entries without touching them.
    const_iterator begin() const { return mMap.begin(); }
    const_iterator end() const { return mMap.end(); }

private:
    Container mMap;
};

}  // namespace Dorvan
