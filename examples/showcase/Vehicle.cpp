#include "Vehicle.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace Showcase {

namespace {

const float Pi = 3.14159265f;
// The model is measured in its own units; a quarter of them make a jeep four metres long.
const float JeepScale = 0.25f;

}  // namespace

Vehicles::Vehicles(Nodes& nodes, Branch& root) {
    TransformationNode& turntable = place(nodes, root, 0, 0, 0);
    TransformationNode& spin = place(nodes, turntable, 0, 0, 0);
    TransformationNode& jeepSize = place(nodes, spin, 0, 0, 0);
    jeepSize.scale(JeepScale, false);
    ObjectNode* jeep = model(nodes, jeepSize, "jeep1.ms3d");
    start(SharedPtr<VelocityModifier>(new VelocityModifier(spin)))->setRotateY(0.6f);

    track = &place(nodes, root, 9, 0, -6);
    TransformationNode& driverSize = place(nodes, *track, 0, 0, 0);
    driverSize.scale(JeepScale, false);
    // The model faces -Z; the modifier drives along +Z.
    driverSize.rotateY(Pi, true);
    ObjectNode* driver = model(nodes, driverSize, "jeep1.ms3d");
    SharedPtr<VelocityModifier> drive = start(SharedPtr<VelocityModifier>(new VelocityModifier(*track)));
    drive->setTransformGlobal(true);
    drive->setTranslateZ(5.0f);
    drive->setRotateY(0.45f);

    TransformationNode& spheres = place(nodes, root, 5.0f, 3.5f, -7.0f);
    TransformationNode& spheresSize = place(nodes, spheres, 0, 0, 0);
    spheresSize.scale(0.015f, false);
    ObjectNode* twoSpheres = model(nodes, spheresSize, "twospheres.ms3d");
    start(SharedPtr<VelocityModifier>(new VelocityModifier(spheres)))->setRotateX(0.8f);

    complete = jeep && driver && twoSpheres;
}

}  // namespace Showcase
