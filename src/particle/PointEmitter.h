#pragma once

#include <cstdint>

#include "particle/ParticleEngine.h"
#include "scene/TVector.h"
#include "velun_export.h"

namespace Velun {

// Emits particles around a point: a burst of setInitPointCount particles at initialize,
// then setPointsPerSecond (the fraction of a particle carried from frame to frame, so
// any rate is kept at any frame rate). Each appears at a random place in the cube of
// edge (sphere max - sphere min) around the centre, lives a random time between the two
// ages (ms; a max age of 0 means forever) and starts with the initial velocity, or with a
// random one (setUseRandomForce) whose components lie within +-setRandomForce (0.05
// units per second per axis by default). Random numbers come from ParticleRandom.
class VELUN_EXPORT PointEmitter : public ParticleEngine::Emitter {
public:
    PointEmitter();
    ~PointEmitter() override;

    unsigned int initParticles(ParticleData& data, std::int64_t now) override;
    unsigned int createParticles(ParticleData& data, std::int64_t now, float dt) override;

    void setInitPointCount(unsigned int count) { mInitPointCount = count; }
    void setCenter(Dorvan::TVector<float, 3> const& center) { mCenter = center; }
    // Units per second.
    void setInitialVelocity(Dorvan::TVector<float, 3> const& velocity) { mInitialVelocity = velocity; }
    void setPointsPerSecond(float rate) { mPointsPerSecond = rate; }
    void setUseRandomForce(bool use) { mUseRandomForce = use; }
    // The largest random start speed per axis, in units per second.
    void setRandomForce(float x, float y, float z);
    // Life span in ms; bounds given the wrong way round are swapped.
    void setPointAge(unsigned int minAge, unsigned int maxAge);
    void setSphereSize(float min, float max);

private:
    unsigned int createParticle(ParticleData& data, std::int64_t now);

    unsigned int mInitPointCount;
    Dorvan::TVector<float, 3> mCenter;
    Dorvan::TVector<float, 3> mInitialVelocity;
    float mPointsPerSecond;
    bool mUseRandomForce;
    Dorvan::TVector<float, 3> mRandomSpread;
    unsigned int mMinAge;
    unsigned int mMaxAge;
    float mSphereMin;
    float mSphereMax;
    std::int64_t mLastTime;
    // The part of a particle owed from earlier calls, below 1.
    double mPending;
};

}  // namespace Velun
