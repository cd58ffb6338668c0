#pragma once

// The world the showcase drives through: ground, sky, crates, glass and the lights.

#include "Scene.h"

namespace Showcase {

struct Valley {
    Valley(Nodes& nodes, Velun::Branch& root);
};

}  // namespace Showcase
