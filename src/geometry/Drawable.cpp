#include "geometry/Drawable.h"

namespace Velun {

Drawable::~Drawable() {}

BoundingVolume const* Drawable::getPhysicsVolume() const { return nullptr; }

}  // namespace Velun
