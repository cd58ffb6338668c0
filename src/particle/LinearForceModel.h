#pragma once

#include <cstdint>

#include "particle/ParticleEngine.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// Constant acceleration plus an optional random jitter, integrated by semi-implicit
// Euler (the new velocity moves the particle): gravity for sparks and fountains, wind
// and turbulence for smoke and dust. Forces are in units per second squared.
class VELUN_EXPORT LinearForceModel : public ParticleEngine::ForceModel {
public:
    LinearForceModel();
    ~LinearForceModel() override;

    void updateParticle(ParticleData& data, std::int64_t now, float dt) override;
    // One pass over the cloud without a call per particle.
    void updateParticles(ParticleData& data, std::int64_t now, float dt) override;

    void setExtForce(Dorvan::TVector<float, 3> const& force) { mExtForce = force; }
    // Per axis, a random acceleration within +-10 times the given value is added at
    // each step (the value is stored times 20, the width of that range).
    void setRandomForce(Dorvan::TVector<float, 3> const& force);

private:
    bool hasRandomForce() const;

    Dorvan::TVector<float, 3> mExtForce;
    Dorvan::TVector<float, 3> mRandomForce;
};

}  // namespace Velun
