#pragma once

#include <cstdint>

#include "logic/LogicElement.h"

namespace Velun {

// The timing rule of the modifiers: the seconds since the last step, with the first
// run after a start, or after any state other than running, moving nothing. While an
// element waits (ready, or without its targets) the clock keeps the time, so that a
// pause never arrives as one huge step.
class StepClock {
public:
    StepClock() : mLastTime(0) {}

    // True if the element should act now; `dt` is then the time since the last step in
    // seconds. A timestamp of 0 counts as no time stored.
    bool step(LogicElement const& element, std::int64_t timestamp, bool hasTargets, float& dt) {
        if (element.getState() == LogicElement::StateDisabled)
            return false;
        if (mLastTime == 0 || element.getState() != LogicElement::StateRunning || !hasTargets) {
            mLastTime = timestamp;
            return false;
        }
        dt = static_cast<float>(timestamp - mLastTime) * 0.001f;
        mLastTime = timestamp;
        return true;
    }

    void clear() { mLastTime = 0; }
    std::int64_t getLastTime() const { return mLastTime; }

private:
    std::int64_t mLastTime;
};

}  // namespace Velun
