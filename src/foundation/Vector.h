#pragma once

#include <algorithm>
#include <vector>

#include "foundation/List.h"

namespace Dorvan {

// Growable array over std::vector. Elements are handed out by value, so a
// Vector<SharedPtr<X>> gives out new references; indices are not checked.
template <class T>
class Vector : public List<T> {
public:
    Vector() {}
    ~Vector() override {}

    T get(unsigned int index) const override { return mData[index]; }
    T operator[](unsigned int index) override { return mData[index]; }

    // Position of the first equal element, or -1.
    int indexOf(T value) const override {
        typename std::vector<T>::const_iterator it = std::find(mData.begin(), mData.end(), value);
        return it == mData.end() ? -1 : static_cast<int>(it - mData.begin());
    }

    // Inserts before `index` (an index at or past the end appends); returns the value.
    T insert(unsigned int index, T value) override {
        if (index >= mData.size())
            mData.push_back(value);
        else
            mData.insert(mData.begin() + index, value);
        return value;
    }

    // Stores the value and returns the element that stood there.
    T set(unsigned int index, T value) override {
        T old = mData[index];
        mData[index] = value;
        return old;
    }

    int add(T value) override {
        mData.push_back(value);
        return static_cast<int>(mData.size()) - 1;
    }

    // Removes the first equal element, if any.
    void remove(T value) override {
        int index = indexOf(value);
        if (index >= 0)
            mData.erase(mData.begin() + index);
    }

    void removeAt(unsigned int index) override { mData.erase(mData.begin() + index); }
    T at(unsigned int index) override { return mData[index]; }
    bool contains(T value) const override { return indexOf(value) >= 0; }

    virtual unsigned int size() const { return static_cast<unsigned int>(mData.size()); }
    virtual void clear() { mData.clear(); }
    virtual bool isEmpty() const { return mData.empty(); }

    // Stores the value and returns the new element.
    virtual T assign(unsigned int index, T value) {
        mData[index] = value;
        return mData[index];
    }

private:
    std::vector<T> mData;
};

}  // namespace Dorvan
