#include "logic/VelocityModifier.h"

#include "scene/Transformation.h"

namespace Velun {

VelocityModifier::VelocityModifier()
    : mTransformation(nullptr), mTransformGlobal(false), mTranslateX(0.0f), mTranslateY(0.0f),
      mTranslateZ(0.0f), mRotateX(0.0f), mRotateY(0.0f), mRotateZ(0.0f) {}

VelocityModifier::VelocityModifier(Transformation& transformation) : VelocityModifier() {
    mTransformation = &transformation;
}

VelocityModifier::~VelocityModifier() {}

void VelocityModifier::setState(State state) {
    Modifier::setState(state);
    if (state != StateRunning)
        mClock.clear();
}

int VelocityModifier::run(std::int64_t timestamp) {
    float dt = 0.0f;
    if (!mClock.step(*this, timestamp, mTransformation != nullptr, dt))
        return 0;
    // Also when all speeds are 0, so that a node under the modifier is marked each frame.
    mTransformation->translate(dt * mTranslateX, dt * mTranslateY, dt * mTranslateZ, mTransformGlobal);
    if (mRotateX != 0.0f)
        mTransformation->rotateX(mRotateX * dt, true);
    if (mRotateY != 0.0f)
        mTransformation->rotateY(mRotateY * dt, true);
    if (mRotateZ != 0.0f)
        mTransformation->rotateZ(mRotateZ * dt, true);
    return 0;
}

}  // namespace Velun
