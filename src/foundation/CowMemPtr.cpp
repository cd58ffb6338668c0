#include "foundation/CowMemPtr.h"

#include <cstdlib>
#include <cstring>

namespace Dorvan {

CowMemPtr<void>::CowMemPtr() : mPtr(nullptr), mRefCount(nullptr), mByteSize(nullptr) {}

CowMemPtr<void>::CowMemPtr(const CowMemPtr& other) : mPtr(nullptr), mRefCount(nullptr), mByteSize(nullptr) {
    assign(other);
}

CowMemPtr<void>::~CowMemPtr() { release(); }

const CowMemPtr<void>& CowMemPtr<void>::operator=(const CowMemPtr& other) {
    if (mPtr == other.mPtr && mRefCount == other.mRefCount)
        return *this;
    release();
    assign(other);
    return *this;
}

bool CowMemPtr<void>::alloc(unsigned int size) {
    if (mPtr)
        return false;
    mRefCount = new unsigned int(1);
    mByteSize = new unsigned int(size);
    mPtr = std::malloc(size ? size : 1);
    return true;
}

bool CowMemPtr<void>::resize(unsigned int size) {
    if (!mPtr)
        return false;
    // realloc(p, 0) may free the block; keep one byte so the handle stays set.
    size_t bytes = size ? size : 1;
    if (*mRefCount <= 1) {
        *mByteSize = size;
        mPtr = std::realloc(mPtr, bytes);
        return true;
    }
    unsigned int oldSize = *mByteSize;
    void* oldPtr = mPtr;
    --*mRefCount;
    mRefCount = new unsigned int(1);
    mByteSize = new unsigned int(size);
    mPtr = std::malloc(bytes);
    std::memcpy(mPtr, oldPtr, oldSize < size ? oldSize : size);
    return true;
}

void* CowMemPtr<void>::get() {
    copy();
    return mPtr;
}

const void* CowMemPtr<void>::get() const { return mPtr; }

bool CowMemPtr<void>::isNull() const { return mPtr == nullptr; }

unsigned int CowMemPtr<void>::getByteSize() const { return mByteSize ? *mByteSize : 0; }

void CowMemPtr<void>::setNull() {
    if (!mPtr)
        return;
    release();
    mPtr = nullptr;
    mRefCount = nullptr;
    mByteSize = nullptr;
}

void CowMemPtr<void>::release() {
    if (!mRefCount)
        return;
    --*mRefCount;
    if (*mRefCount == 0)
        destroy();
}

void CowMemPtr<void>::copy() {
    if (!mPtr || !mRefCount || *mRefCount < 2)
        return;
    release();
    unsigned int size = *mByteSize;
    void* block = std::malloc(size ? size : 1);
    std::memcpy(block, mPtr, size);
    mPtr = block;
    mByteSize = new unsigned int(size);
    mRefCount = new unsigned int(1);
}

void CowMemPtr<void>::assign(const CowMemPtr& other) {
    mPtr = other.mPtr;
    mRefCount = other.mRefCount;
    mByteSize = other.mByteSize;
    if (mRefCount)
        ++*mRefCount;
}

void CowMemPtr<void>::destroy() {
    std::free(mPtr);
    delete mRefCount;
    delete mByteSize;
    mPtr = nullptr;
    mRefCount = nullptr;
    mByteSize = nullptr;
}

}  // namespace Dorvan
