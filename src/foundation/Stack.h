#pragma once

#include <deque>

namespace Dorvan {

// Stack over the back of a std::deque.
template <class T>
class Stack {
public:
    Stack() {}
    virtual ~Stack() {}

    void push(const T& value) { mData.push_back(value); }
    void pop() { mData.pop_back(); }
    T& top() { return mData.back(); }
    const T& top() const { return mData.back(); }
    bool isEmpty() const { return mData.empty(); }
    unsigned int size() const { return static_cast<unsigned int>(mData.size()); }

private:
    std::deque<T> mData;
};

}  // namespace Dorvan
