#pragma once

#include <cstdint>

#include "foundation/SharedPtr.h"
#include "particle/ParticleData.h"
#include "velun_export.h"

namespace Velun {

// Drives one particle cloud: an Emitter decides when and where particles appear, a
// ForceModel how they move, and the cloud lives in a ParticleData. The engine is no node
// and nothing schedules it: the application calls update once per frame.
//
//     ParticleEngine smoke;
//     SharedPtr<PointEmitter> emitter(new PointEmitter());
//     emitter->setCenter(TVector<float, 3>(0, 0, 0));
//     emitter->setPointsPerSecond(200);
//     emitter->setPointAge(1500, 2500);              // ms
//     emitter->setUseRandomForce(true);              // spread set by setRandomForce
//     SharedPtr<LinearForceModel> wind(new LinearForceModel());
//     wind->setExtForce(TVector<float, 3>(0.5f, 1.0f, 0));  // units per second squared
//     smoke.setEmitter(emitter);
//     smoke.setForceModel(wind);
//     smoke.initialize();
//     smoke.start();
//     subobject->setGeometry(smoke.getParticleData().getGeometryData(), 0);
//     subobject->setMaterial(0, spriteMaterial);     // setUsePointSprites, setSpriteSize
//     ... each frame: smoke.update(timerManager.getTimestamp());
//
// update measures its step from the previous update (or from initialize, start or
// clear), emits, ages every particle (with or without a force model), moves the living
// ones and rebuilds the drawn list and box. stop(true) lets the cloud burn out: nothing
// new appears and the engine stops itself when the last particle is gone; stop(false)
// freezes it where it is. initialize starts over with an empty cloud.
class VELUN_EXPORT ParticleEngine {
public:
    // Makes particles: a burst at initialize, then some in each update.
    class VELUN_EXPORT Emitter {
    public:
        virtual ~Emitter();
        // Returns the number of particles made.
        virtual unsigned int initParticles(ParticleData& data, std::int64_t now) = 0;
        // `dt` in seconds since the previous update; returns the number made.
        virtual unsigned int createParticles(ParticleData& data, std::int64_t now, float dt) = 0;
    };

    // Moves particles. updateParticle works on the data's current particle;
    // updateParticles moves the whole cloud and by default calls updateParticle for each
    // living particle. A model that overrides updateParticles for speed must age the
    // cloud as the default does, through ParticleData::advance.
    class VELUN_EXPORT ForceModel {
    public:
        virtual ~ForceModel();
        virtual void updateParticle(ParticleData& data, std::int64_t now, float dt) = 0;
        virtual void updateParticles(ParticleData& data, std::int64_t now, float dt);
    };

    ParticleEngine();
    virtual ~ParticleEngine();

    ParticleEngine(const ParticleEngine&) = delete;
    ParticleEngine& operator=(const ParticleEngine&) = delete;

    void setEmitter(Dorvan::SharedPtr<Emitter> emitter) { mEmitter = emitter; }
    void setForceModel(Dorvan::SharedPtr<ForceModel> forceModel) { mForceModel = forceModel; }

    // Empties the cloud, takes the time and lets the emitter make its first particles.
    bool initialize();
    // Takes the time and runs; update does nothing before initialize and start.
    void start();
    // true: burn out (no new particles, stop when none is left); false: freeze now.
    void stop(bool burnOut);
    // Takes the time, so that the next update's step starts now; particles stay.
    void clear();
    // One frame at `now` (ms, the timer manager's timestamp).
    void update(std::int64_t now);

    bool isRunning() const { return mRunning; }
    bool isBurnOut() const { return mBurnOut; }
    ParticleData& getParticleData() { return mParticleData; }
    ParticleData const& getParticleData() const { return mParticleData; }

private:
    bool mRunning;
    bool mBurnOut;
    std::int64_t mTimeStamp;
    Dorvan::SharedPtr<ForceModel> mForceModel;
    Dorvan::SharedPtr<Emitter> mEmitter;
    ParticleData mParticleData;
};

}  // namespace Velun
