#include "CountingAllocator.h"

#include <cstdlib>
#include <new>

// Replaces the global allocation functions of the whole test program; kept in a file
// of its own so that the compiler never sees a new-expression next to the free below.
namespace {
bool gCounting = false;
std::size_t gAllocations = 0;
}  // namespace

void* operator new(std::size_t size) {
    if (gCounting)
        ++gAllocations;
    void* p = std::malloc(size ? size : 1);
    if (!p)
        throw std::bad_alloc();
    return p;
}

void operator delete(void* p) noexcept { std::free(p); }

void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace SceneTest {

void startCountingAllocations() {
    gAllocations = 0;
    gCounting = true;
}

std::size_t stopCountingAllocations() {
    gCounting = false;
    return gAllocations;
}

}  // namespace SceneTest
