#pragma once

namespace Dorvan {

// Counted pointer with a separately allocated count. The object knows nothing of the
// count; the last copy deletes it. Counting is plain: the engine runs in one thread.
// A base class `T` of the held object needs a virtual destructor.
template <class T>
class SharedPtr {
public:
    SharedPtr() : mPtr(nullptr), mRefCount(nullptr) {}

    explicit SharedPtr(T* ptr) : mPtr(ptr), mRefCount(new int(1)) {}

    SharedPtr(const SharedPtr& other) : mPtr(other.mPtr), mRefCount(other.mRefCount) {
        if (mRefCount)
            ++*mRefCount;
    }

    // Derived-to-base conversion: the pointer converts and the count is shared.
    template <class U>
    SharedPtr(const SharedPtr<U>& other) : mPtr(other.mPtr), mRefCount(other.mRefCount) {
        if (mRefCount)
            ++*mRefCount;
    }

    virtual ~SharedPtr() { release(); }

    SharedPtr& operator=(const SharedPtr& other) {
        assignFrom(other.mPtr, other.mRefCount);
        return *this;
    }

    template <class U>
    SharedPtr& operator=(const SharedPtr<U>& other) {
        assignFrom(other.mPtr, other.mRefCount);
        return *this;
    }

    SharedPtr& operator=(T* ptr) {
        if (ptr == mPtr)
            return *this;
        release();
        mPtr = ptr;
        mRefCount = new int(1);
        return *this;
    }

    T* operator->() const { return mPtr; }
    T& operator*() const { return *mPtr; }
    T* get() const { return mPtr; }
    bool isNull() const { return mPtr == nullptr; }
    explicit operator bool() const { return mPtr != nullptr; }

    bool operator==(const SharedPtr& other) const { return mPtr == other.mPtr; }
    bool operator!=(const SharedPtr& other) const { return mPtr != other.mPtr; }
    bool operator<(const SharedPtr& other) const { return mPtr < other.mPtr; }

    // Number of copies sharing the object, 0 for an empty pointer.
    int getRefCount() const { return mRefCount ? *mRefCount : 0; }

    void release() {
        if (!mRefCount)
            return;
        T* ptr = mPtr;
        int* count = mRefCount;
        mPtr = nullptr;
        mRefCount = nullptr;
        if (--*count == 0) {
            delete ptr;
            delete count;
        }
    }

private:
    template <class U>
    friend class SharedPtr;

    void assignFrom(T* ptr, int* refCount) {
        if (ptr == mPtr)
            return;
        if (refCount)
            ++*refCount;
        release();
        mPtr = ptr;
        mRefCount = refCount;
    }

    T* mPtr;
    int* mRefCount;
};

}  // namespace Dorvan
