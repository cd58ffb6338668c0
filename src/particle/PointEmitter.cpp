#include "particle/PointEmitter.h"

#include <cmath>
#include <utility>

#include "particle/ParticleRandom.h"

namespace Velun {

namespace {

const float kUnit = 1.0f / ParticleRandom::Max;

}  // namespace

PointEmitter::PointEmitter()
    : mInitPointCount(0), mCenter(0, 0, 0), mInitialVelocity(0, 0, 0), mPointsPerSecond(0.0f),
      mUseRandomForce(false), mRandomSpread(0.05f, 0.05f, 0.05f), mMinAge(1), mMaxAge(1000), mSphereMin(0.0f),
      mSphereMax(0.1f), mLastTime(0), mPending(0.0) {}

PointEmitter::~PointEmitter() {}

void PointEmitter::setRandomForce(float x, float y, float z) {
    mRandomSpread = Dorvan::TVector<float, 3>(x, y, z);
}

void PointEmitter::setPointAge(unsigned int minAge, unsigned int maxAge) {
    if (maxAge != 0 && maxAge < minAge)
        std::swap(minAge, maxAge);
    mMinAge = minAge;
    mMaxAge = maxAge;
}

void PointEmitter::setSphereSize(float min, float max) {
    mSphereMin = min;
    mSphereMax = max;
}

unsigned int PointEmitter::initParticles(ParticleData& data, std::int64_t now) {
    unsigned int made = 0;
    for (unsigned int i = 0; i < mInitPointCount; ++i)
        made += createParticle(data, now);
    mLastTime = now;
    return made;
}

unsigned int PointEmitter::createParticles(ParticleData& data, std::int64_t now, float dt) {
    if (mLastTime == 0) {
        mLastTime = now;
        return 0;
    }
    const double owed = static_cast<double>(dt) * mPointsPerSecond + mPending;
    const double whole = owed > 0.0 ? std::floor(owed) : 0.0;
    mPending = owed > 0.0 ? owed - whole : 0.0;
    const unsigned int count = static_cast<unsigned int>(whole);
    unsigned int made = 0;
    for (unsigned int i = 0; i < count; ++i)
        made += createParticle(data, now);
    mLastTime = now;
    return made;
}

unsigned int PointEmitter::createParticle(ParticleData& data, std::int64_t now) {
    ParticleRandom random = ParticleRandom::shared();
    const float size = mSphereMax - mSphereMin;
    Dorvan::TVector<float, 3> position;
    for (int c = 0; c < 3; ++c)
        position[c] = mCenter[c] + random.next() * size * kUnit + mSphereMin - size * 0.5f;
    std::int64_t death = 0;
    if (mMaxAge != 0) {
        const std::int64_t span = static_cast<std::int64_t>(mMaxAge) - mMinAge;
        death = now + mMinAge + (random.next() * span) / (ParticleRandom::Max + 1);
    }
    Dorvan::TVector<float, 3> velocity = mInitialVelocity;
    if (mUseRandomForce) {
        for (int c = 0; c < 3; ++c)
            velocity[c] = (2.0f * random.next() * kUnit - 1.0f) * mRandomSpread[c];
    }
    ParticleRandom::store(random);
    const int slot = data.addParticle(position, death);
    data.setVelocity(velocity);
    return slot < 0 ? 0 : 1;
}

}  // namespace Velun
