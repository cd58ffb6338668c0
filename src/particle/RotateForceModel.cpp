#include "particle/RotateForceModel.h"

#include <cmath>

namespace Velun {

namespace {

float length(float const* v) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

}  // namespace

RotateForceModel::RotateForceModel() : mCenter(0, 0, 0) {}

RotateForceModel::~RotateForceModel() {}

void RotateForceModel::move(float* p, float* v, float dt) const {
    const float offset[3] = {p[0] - mCenter[0], p[1] - mCenter[1], p[2] - mCenter[2]};
    const float radius = length(offset);
    if (radius < 0.01f)
        return;
    float direction[3] = {offset[0] + v[0] * dt, offset[1] + v[1] * dt, offset[2] + v[2] * dt};
    const float reach = length(direction);
    if (reach == 0.0f)
        return;
    float step[3];
    for (int c = 0; c < 3; ++c) {
        const float moved = mCenter[c] + direction[c] * (radius / reach);
        step[c] = moved - p[c];
        p[c] = moved;
    }
    // The unit step direction at the old speed; no step leaves no direction to follow.
    const float stepLength = length(step);
    const float scale = stepLength > 0.0f ? length(v) / stepLength : 0.0f;
    for (int c = 0; c < 3; ++c)
        v[c] = step[c] * scale;
}

void RotateForceModel::updateParticle(ParticleData& data, std::int64_t, float dt) {
    const int slot = data.getCurrentNum();
    float* positions = data.getPositionArray();
    if (slot < 0 || static_cast<unsigned int>(slot) >= data.getSlotCount() || !positions)
        return;
    move(positions + 3 * slot, data.getVelocityArray() + 3 * slot, dt);
}

void RotateForceModel::updateParticles(ParticleData& data, std::int64_t now, float dt) {
    float* positions = data.getPositionArray();
    float* velocities = data.getVelocityArray();
    data.advance(now, [&](unsigned int slot) { move(positions + 3 * slot, velocities + 3 * slot, dt); });
}

}  // namespace Velun
