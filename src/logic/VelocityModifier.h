#pragma once

#include <cstdint>

#include "core/Process.h"
#include "logic/Modifier.h"
#include "logic/StepClock.h"
#include "velun_export.h"

namespace Velun {

class Transformation;

// Moves and spins a Transformation at constant speeds: translation in units per
// second, rotation in radians per second about the node's own axes, so a node spins
// in place while it drifts. Register it with EventManager::registerModifier and
// switch it on with setState(StateRunning); the first run after that only takes the
// time. The transformation is not owned and must outlive the modifier's runs.
class VELUN_EXPORT VelocityModifier : public Modifier, public Process {
public:
    VelocityModifier();
    explicit VelocityModifier(Transformation& transformation);
    ~VelocityModifier() override;

    // A state other than running forgets the time, so a restart does not jump.
    void setState(State state) override;
    // Always 0.
    int run(std::int64_t timestamp) override;

    Transformation* getTransformation() const { return mTransformation; }
    void setTransformation(Transformation& transformation) { mTransformation = &transformation; }
    void unsetTransformation() { mTransformation = nullptr; }
    // The `local` flag of the translation: false moves along the parent's axes, true
    // along the node's own.
    bool doTransformGlobal() const { return mTransformGlobal; }
    void setTransformGlobal(bool global) { mTransformGlobal = global; }

    float getTranslateX() const { return mTranslateX; }
    void setTranslateX(float speed) { mTranslateX = speed; }
    float getTranslateY() const { return mTranslateY; }
    void setTranslateY(float speed) { mTranslateY = speed; }
    float getTranslateZ() const { return mTranslateZ; }
    void setTranslateZ(float speed) { mTranslateZ = speed; }
    float getRotateX() const { return mRotateX; }
    void setRotateX(float speed) { mRotateX = speed; }
    float getRotateY() const { return mRotateY; }
    void setRotateY(float speed) { mRotateY = speed; }
    float getRotateZ() const { return mRotateZ; }
    void setRotateZ(float speed) { mRotateZ = speed; }

private:
    Transformation* mTransformation;
    StepClock mClock;
    bool mTransformGlobal;
    float mTranslateX;
    float mTranslateY;
    float mTranslateZ;
    float mRotateX;
    float mRotateY;
    float mRotateZ;
};

}  // namespace Velun
