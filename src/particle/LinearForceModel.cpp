#include "particle/LinearForceModel.h"

#include "particle/ParticleRandom.h"

namespace Velun {

namespace {

const float kUnit = 1.0f / ParticleRandom::Max;

}  // namespace

LinearForceModel::LinearForceModel() : mExtForce(0, 0, 0), mRandomForce(0, 0, 0) {}

LinearForceModel::~LinearForceModel() {}

void LinearForceModel::setRandomForce(Dorvan::TVector<float, 3> const& force) {
    mRandomForce = force * 20.0f;
}

bool LinearForceModel::hasRandomForce() const {
    return mRandomForce[0] != 0.0f || mRandomForce[1] != 0.0f || mRandomForce[2] != 0.0f;
}

void LinearForceModel::updateParticle(ParticleData& data, std::int64_t, float dt) {
    const int slot = data.getCurrentNum();
    float* positions = data.getPositionArray();
    float* velocities = data.getVelocityArray();
    if (slot < 0 || static_cast<unsigned int>(slot) >= data.getSlotCount() || !positions)
        return;
    Dorvan::TVector<float, 3> acceleration = mExtForce;
    if (hasRandomForce()) {
        ParticleRandom random = ParticleRandom::shared();
        for (int c = 0; c < 3; ++c)
            acceleration[c] += random.next() * mRandomForce[c] * kUnit - mRandomForce[c] * 0.5f;
        ParticleRandom::store(random);
    }
    float* p = positions + 3 * slot;
    float* v = velocities + 3 * slot;
    for (int c = 0; c < 3; ++c) {
        v[c] += acceleration[c] * dt;
        p[c] += v[c] * dt;
    }
}

void LinearForceModel::updateParticles(ParticleData& data, std::int64_t now, float dt) {
    float* positions = data.getPositionArray();
    float* velocities = data.getVelocityArray();
    // The constant part of the step: dv = a * dt, with the random part's offset folded in.
    float base[3], scale[3];
    for (int c = 0; c < 3; ++c) {
        base[c] = (mExtForce[c] - mRandomForce[c] * 0.5f) * dt;
        scale[c] = mRandomForce[c] * kUnit * dt;
    }
    auto move = [=](unsigned int slot, float dx, float dy, float dz) {
        float* p = positions + 3 * slot;
        float* v = velocities + 3 * slot;
        v[0] += dx;
        v[1] += dy;
        v[2] += dz;
        p[0] += v[0] * dt;
        p[1] += v[1] * dt;
        p[2] += v[2] * dt;
    };
    if (!hasRandomForce()) {
        data.advance(now, [&](unsigned int slot) { move(slot, base[0], base[1], base[2]); });
        return;
    }
    ParticleRandom random = ParticleRandom::shared();
    data.advance(now, [&](unsigned int slot) {
        int rx, ry, rz;
        random.nextThree(rx, ry, rz);
        move(slot, base[0] + rx * scale[0], base[1] + ry * scale[1], base[2] + rz * scale[2]);
    });
    ParticleRandom::store(random);
}

}  // namespace Velun
