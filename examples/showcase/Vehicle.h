#pragma once

// The vehicles: a jeep spinning on a turntable and one from the same cached model
// driving in circles, which the chase camera follows; two spheres tumble above.

#include "Scene.h"

namespace Showcase {

struct Vehicles {
    Vehicles(Nodes& nodes, Velun::Branch& root);

    // Where the driving jeep is: the chase camera follows this node.
    Velun::TransformationNode* track = nullptr;
    bool complete = false;  // every model loaded
};

}  // namespace Showcase
