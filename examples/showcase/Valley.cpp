#include "Valley.h"

#include "Shapes.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace Showcase {

namespace {

const float Pi = 3.14159265f;

}  // namespace

Valley::Valley(Nodes& nodes, Branch& root) {
    TransformationNode& ground = place(nodes, root, 0, 0, 0);
    ground.rotateX(-Pi / 2, true);
    shape(
        nodes, ground, makeQuad(-60, -60, 60, 60, 24, 48),
        texturedMaterial(makeCheckerTexture(128, 2, Color(0.92f, 0.86f, 0.70f), Color(0.45f, 0.38f, 0.30f))));
    TransformationNode& sky = place(nodes, root, 0, 0, 0);
    shape(nodes, sky, makeBox(150, 150, 150, true), unlitMaterial(Color(0.16f, 0.42f, 0.55f), false));

    SharedPtr<Geometry> crateBox = makeBox(0.8f, 0.8f, 0.8f);
    SharedPtr<Material> crate = texturedMaterial(makeCrateTexture(128));
    const float crates[][3] = {
        {-6.0f, 0.8f, -3.0f}, {-4.2f, 0.8f, -4.0f}, {-5.1f, 2.4f, -3.5f}, {6.5f, 0.8f, 2.0f}};
    for (const float* c : crates)
        shape(nodes, place(nodes, root, c[0], c[1], c[2]), crateBox, crate);

    // A pane of tinted glass between the camera and the turntable.
    TransformationNode& pane = place(nodes, root, 1.0f, 0.0f, 4.0f);
    pane.rotateY(0.35f, true);
    shape(nodes, pane, makeColoredQuad(-1.6f, 0.0f, 1.6f, 1.6f, Color(0.35f, 0.85f, 1.0f, 0.35f)),
          unlitMaterial(Color(1, 1, 1), true));

    // Lights: a low sun, a warm lamp by the crates and a cool spot on the turntable.
    TransformationNode& sun = place(nodes, root, 0, 0, 0);
    sun.rotateY(0.6f, true);
    sun.rotateX(-0.9f, true);
    light(nodes, sun, Light::Directional, Color(0.85f, 0.82f, 0.72f));
    TransformationNode& lamp = place(nodes, root, -4.0f, 3.0f, -1.0f);
    light(nodes, lamp, Light::PointLight, Color(1.0f, 0.55f, 0.2f)).setLinearAttenuation(0.15f);
    TransformationNode& spotPlace = place(nodes, root, 0.0f, 7.0f, 0.0f);
    spotPlace.rotateX(-Pi / 2, true);
    Light& spot = light(nodes, spotPlace, Light::Spot, Color(0.4f, 0.55f, 1.0f));
    spot.setSpotCutoff(25.0f);
    spot.setSpotExponent(8.0f);
}

}  // namespace Showcase
