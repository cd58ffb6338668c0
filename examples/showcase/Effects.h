#pragma once

// Particle effects: dust that rises behind the jeep's rear wheels, and sparks that fly
// up from a campfire by the river. Each is a ParticleEngine with a PointEmitter and a
// LinearForceModel, drawn as point sprites through a GeometrySubobject.

#include "Scene.h"
#include "Vehicle.h"

namespace Showcase {

class Effects : public Velun::Process {
public:
    Effects(Nodes& nodes, Velun::Branch& root, Jeep& jeep, const Velun::Point& campfire);

    unsigned int getParticleCount() const;
    int run(std::int64_t timestamp) override;

private:
    Jeep& mJeep;
    Velun::ParticleEngine mDust;
    Velun::ParticleEngine mSparks;
    Dorvan::SharedPtr<Velun::PointEmitter> mDustEmitter;
};

}  // namespace Showcase
