#pragma once

#include <cstdint>

#include "particle/ParticleEngine.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// Keeps each particle on the sphere around a centre on which it was made: a step along
// its velocity is put back onto that sphere, and the velocity turns to follow the
// surface at its old speed. Particles closer than 0.01 to the centre stay where they are.
// Swirls, orbiting sparks, a vortex.
class VELUN_EXPORT RotateForceModel : public ParticleEngine::ForceModel {
public:
    RotateForceModel();
    ~RotateForceModel() override;

    void updateParticle(ParticleData& data, std::int64_t now, float dt) override;
    // One pass over the cloud without a call per particle.
    void updateParticles(ParticleData& data, std::int64_t now, float dt) override;

    void setCenter(Dorvan::TVector<float, 3> const& center) { mCenter = center; }

private:
    void move(float* position, float* velocity, float dt) const;

    Dorvan::TVector<float, 3> mCenter;
};

}  // namespace Velun
