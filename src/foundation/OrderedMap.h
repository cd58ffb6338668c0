#pragma once

#include "foundation/LinkedMap.h"
#include "foundation/Vector.h"

namespace Dorvan {

// Map that remembers the order of insertion. Walk it by position, 0 to size() - 1,
// through keyAt and valueAt. `operator[]` and `get` of a missing key create an entry
// of the inner map only: it is not counted by size() and has no position.
template <class K, class V>
class OrderedMap : public Map<K, V> {
public:
    OrderedMap() {}
    ~OrderedMap() override {}

    unsigned int size() const override { return mKeys.size(); }
    bool isEmpty() const override { return mKeys.size() == 0; }

    void clear() override {
        mEntries.clear();
        mKeys.clear();
    }

    V operator[](K key) override { return mEntries[key]; }

    // Appends a new key; an existing key keeps its position and gets the new value.
    V put(K key, V value) override {
        if (!mEntries.containsKey(key) || mKeys.indexOf(key) < 0)
            mKeys.add(key);
        return mEntries.put(key, value);
    }

    V remove(K key) override {
        mKeys.remove(key);
        return mEntries.remove(key);
    }

    V get(K key) override { return mEntries.get(key); }
    bool containsKey(K key) const override { return mEntries.containsKey(key); }
    bool containsValue(V value) const override { return mEntries.containsValue(value); }

    virtual V removeAt(unsigned int position) {
        K key = mKeys.get(position);
        mKeys.removeAt(position);
        return mEntries.remove(key);
    }

    virtual int indexOf(K key) const { return mKeys.indexOf(key); }
    virtual K keyAt(unsigned int position) const { return mKeys.get(position); }
    virtual V valueAt(unsigned int position) { return mEntries[keyAt(position)]; }

    // Puts a new key at `position` of the order (at or past the end appends). A key that is
    // present already is moved there. Returns the value.
    virtual V insertAt(unsigned int position, K key, V value) {
        mKeys.remove(key);
        mKeys.insert(position, key);
        return mEntries.put(key, value);
    }

    // Puts the key just before the key that stands at `position`.
    virtual V insertBefore(unsigned int position, K key, V value) { return insertAt(position, key, value); }

    // Puts the key just after the key that stands at `position`.
    virtual V insertAfter(unsigned int position, K key, V value) {
        return insertAt(position + 1, key, value);
    }

private:
    LinkedMap<K, V> mEntries;
    Vector<K> mKeys;
};

}  // namespace Dorvan
