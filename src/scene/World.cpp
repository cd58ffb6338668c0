#include "scene/World.h"

namespace Velun {

World::~World() {}

}  // namespace Velun
