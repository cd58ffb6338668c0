#pragma once

namespace Dorvan {

// Interface of the engine's lists. Elements are returned by value and indices are not checked.
template <class T>
class List {
public:
    virtual ~List() {}
    virtual T get(unsigned int index) const = 0;
    virtual T operator[](unsigned int index) = 0;
    virtual int indexOf(T value) const = 0;
    virtual T insert(unsigned int index, T value) = 0;
    virtual T set(unsigned int index, T value) = 0;
    virtual int add(T value) = 0;
    virtual void remove(T value) = 0;
    virtual void removeAt(unsigned int index) = 0;
    virtual T at(unsigned int index) = 0;
    virtual bool contains(T value) const = 0;
};

}  // namespace Dorvan
