#pragma once

#include <cstddef>

namespace SceneTest {

// The test program's operator new counts while counting is on.
void startCountingAllocations();
// The number of allocations since the start; counting stops.
std::size_t stopCountingAllocations();

}  // namespace SceneTest
