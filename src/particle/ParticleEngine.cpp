#include "particle/ParticleEngine.h"

#include "core/TimerManager.h"
#include "core/VelunCore.h"

namespace Velun {

namespace {

std::int64_t currentTimestamp() {
    TimerManager* timer = VelunCore::getSingleton().findTimerManager();
    return timer ? timer->getTimestamp() : 0;
}

}  // namespace

ParticleEngine::Emitter::~Emitter() {}

ParticleEngine::ForceModel::~ForceModel() {}

void ParticleEngine::ForceModel::updateParticles(ParticleData& data, std::int64_t now, float dt) {
    data.advance(now, [&](unsigned int) { updateParticle(data, now, dt); });
}

ParticleEngine::ParticleEngine() : mRunning(false), mBurnOut(false), mTimeStamp(0) {}

ParticleEngine::~ParticleEngine() {}

bool ParticleEngine::initialize() {
    mParticleData.initialize();
    mTimeStamp = currentTimestamp();
    if (mEmitter)
        mEmitter->initParticles(mParticleData, mTimeStamp);
    return true;
}

void ParticleEngine::start() {
    mTimeStamp = currentTimestamp();
    mRunning = true;
    mBurnOut = false;
}

void ParticleEngine::stop(bool burnOut) {
    if (burnOut) {
        mBurnOut = true;
        return;
    }
    mRunning = false;
    mBurnOut = false;
}

void ParticleEngine::clear() { mTimeStamp = currentTimestamp(); }

void ParticleEngine::update(std::int64_t now) {
    if (!mRunning || mTimeStamp == 0 || !mParticleData.isInitialized())
        return;
    // A clock that steps back gives no step and keeps the reference time.
    const float dt = now > mTimeStamp ? static_cast<float>(now - mTimeStamp) * 0.001f : 0.0f;
    if (mEmitter && !mBurnOut)
        mEmitter->createParticles(mParticleData, now, dt);
    if (mForceModel)
        mForceModel->updateParticles(mParticleData, now, dt);
    else
        mParticleData.advance(now, [](unsigned int) {});
    const unsigned int living = mParticleData.updateData(now);
    if (mBurnOut && living == 0) {
        mRunning = false;
        mBurnOut = false;
    }
    if (now > mTimeStamp)
        mTimeStamp = now;
}

}  // namespace Velun
