#pragma once

namespace Dorvan {

// A key and a value: the element type of every map's collection interface.
template <class K, class V>
struct MapEntry {
    K key;
    V value;
};

// Common interface of the engine's containers.
template <class T>
class Collection {
public:
    virtual ~Collection() {}
    virtual unsigned int size() const = 0;
    virtual bool isEmpty() const = 0;
    virtual void clear() = 0;
};

// Interface of the maps. `operator[]` and `get` create missing entries with a default
// value; `containsKey` is the only lookup that never changes the map.
template <class K, class V>
class Map : public Collection<MapEntry<K, V>> {
public:
    virtual V operator[](K key) = 0;
    virtual V put(K key, V value) = 0;
    virtual V remove(K key) = 0;
    virtual V get(K key) = 0;
    virtual bool containsKey(K key) const = 0;
    virtual bool containsValue(V value) const = 0;
};

}  // namespace Dorvan
