#include "Effects.h"

#include <cmath>

#include "Shapes.h"

using Dorvan::SharedPtr;
using Dorvan::TVector;
using namespace Velun;

namespace Showcase {

namespace {

// A soft round spot, white, its alpha falling off towards the rim.
SharedPtr<Texture> spot() {
    const int size = 32;
    return makeTexture(makeImage(size, size, Color::Rgba, [](int x, int y, float* c) {
        float dx = (x + 0.5f) / size * 2.0f - 1.0f, dy = (y + 0.5f) / size * 2.0f - 1.0f;
        float r = std::sqrt(dx * dx + dy * dy);
        c[0] = c[1] = c[2] = 1.0f;
        c[3] = std::fmax(0.0f, 1.0f - r * r);
    }));
}

// Unlit, blended sprites of one colour and size in pixels, drawn where `engine`'s cloud is.
void show(Nodes& nodes, Branch& root, ParticleEngine& engine, Color color, float size) {
    static const SharedPtr<Texture> texture = spot();
    SharedPtr<Material> material = unlitMaterial(color, true);
    material->setTexture(0, texture);
    material->setUsePointSprites(true);
    material->setSpriteSize(size);

    TransformationNode& world = place(nodes, root, 0, 0, 0);
    GeometryObject& object = nodes.keep(new GeometryObject());
    GeometrySubobject* part = new GeometrySubobject();
    part->setGeometry(engine.getParticleData().getGeometryData(), 0);
    part->setMaterial(0, material);
    object.addSubobject(*part);
    world.setChild(object);
}

}  // namespace

Effects::Effects(Nodes& nodes, Branch& root, Jeep& jeep, const Point& campfire)
    : mJeep(jeep), mDustEmitter(new PointEmitter()) {
    // Dust: puffs that drift up and to the side and settle out within two seconds.
    mDustEmitter->setPointsPerSecond(70.0f);
    mDustEmitter->setPointAge(1200, 2200);
    mDustEmitter->setUseRandomForce(true);
    mDustEmitter->setRandomForce(0.9f, 0.5f, 0.9f);
    mDustEmitter->setSphereSize(0.0f, 0.6f);
    SharedPtr<LinearForceModel> drift(new LinearForceModel());
    drift->setExtForce(TVector<float, 3>(0.2f, 0.5f, 0.1f));
    mDust.setEmitter(mDustEmitter);
    mDust.setForceModel(drift);
    show(nodes, root, mDust, Color(0.76f, 0.64f, 0.47f, 0.6f), 18.0f);

    // Sparks: fast, short-lived and pulled back down.
    SharedPtr<PointEmitter> fire(new PointEmitter());
    fire->setCenter(TVector<float, 3>(campfire[0], campfire[1] + 0.2f, campfire[2]));
    fire->setInitialVelocity(TVector<float, 3>(0.0f, 5.0f, 0.0f));
    fire->setPointsPerSecond(220.0f);
    fire->setPointAge(700, 1500);
    fire->setUseRandomForce(true);
    fire->setRandomForce(1.2f, 2.5f, 1.2f);
    fire->setSphereSize(0.0f, 0.5f);
    SharedPtr<LinearForceModel> gravity(new LinearForceModel());
    gravity->setExtForce(TVector<float, 3>(0.0f, -3.0f, 0.0f));
    mSparks.setEmitter(fire);
    mSparks.setForceModel(gravity);
    show(nodes, root, mSparks, Color(1.0f, 0.55f, 0.12f, 1.0f), 9.0f);

    for (ParticleEngine* engine : {&mDust, &mSparks}) {
        engine->initialize();
        engine->start();
    }
}

unsigned int Effects::getParticleCount() const {
    return mDust.getParticleData().getParticleCount(true) + mSparks.getParticleData().getParticleCount(true);
}

int Effects::run(std::int64_t timestamp) {
    Point wheels = mJeep.getRearWheels();
    mDustEmitter->setCenter(TVector<float, 3>(wheels[0], wheels[1], wheels[2]));
    mDust.update(timestamp);
    mSparks.update(timestamp);
    return 0;
}

}  // namespace Showcase
