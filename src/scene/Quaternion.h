#pragma once

namespace Dorvan {

// Named by Transformation::rotate(Quaternion, bool), which is reserved; no body yet.
template <typename T>
class Quaternion;

}  // namespace Dorvan
