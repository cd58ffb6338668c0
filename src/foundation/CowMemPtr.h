#pragma once

#include "velun_export.h"

namespace Dorvan {

template <class T>
class CowMemPtr;

// Copy-on-write block of raw bytes. Handles share a block by count; the non-const
// get() takes a private copy first, so code that only reads must use the const get().
template <>
class VELUN_EXPORT CowMemPtr<void> {
public:
    CowMemPtr();
    CowMemPtr(const CowMemPtr& other);
    virtual ~CowMemPtr();

    const CowMemPtr& operator=(const CowMemPtr& other);

    // Allocates an uninitialised block; false when the handle has one already.
    bool alloc(unsigned int size);
    // Grows or shrinks the block, keeping the leading bytes; a shared block is copied
    // first, and the other handles keep the old block and size. False on a null handle.
    bool resize(unsigned int size);

    void* get();
    const void* get() const;
    bool isNull() const;
    unsigned int getByteSize() const;
    void setNull();

    // True when both handles refer to one block.
    bool sharesWith(const CowMemPtr& other) const { return mPtr && mPtr == other.mPtr; }

private:
    void release();
    void copy();
    void assign(const CowMemPtr& other);
    void destroy();

    void* mPtr;
    unsigned int* mRefCount;
    unsigned int* mByteSize;
};

}  // namespace Dorvan
