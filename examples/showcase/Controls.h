#pragma once

// The viewer's controls: a camera that orbits a point, steered with the arrow keys, a
// drag of the left mouse button and the wheel; a left click without a drag picks what
// lies under the pointer; Escape or closing the window ends the run.

#include <functional>

#include "Velun.h"

namespace Showcase {

// A camera place that circles a point: yaw and pitch in radians, distance in scene units.
struct Orbit {
    float yaw = 0.35f;
    float pitch = 0.32f;
    float distance = 12.0f;
    float minDistance = 5.0f;
    float maxDistance = 40.0f;
    Velun::Point target = Velun::Point(0.0f, 1.0f, 0.0f);

    void apply(Velun::Transformation& place) const;
    // Where apply puts the eye, in world coordinates.
    Velun::Point eye() const;
};

class Controls : public Velun::InputProcessor {
public:
    // `pick` is called with the window pixel of a click (top row 0).
    Controls(Orbit& orbit, Velun::Transformation& place, std::function<void(int, int)> pick);

    bool processEvent(Velun::InputEvent& event) override;

private:
    bool key(const Velun::KeyEventInfo& key);
    bool button(const Velun::ButtonEventInfo& button);
    bool move(const Velun::MoveEventInfo& move);
    void zoom(float step);

    Orbit& mOrbit;
    Velun::Transformation& mPlace;
    std::function<void(int, int)> mPick;
    bool mDragging = false;
    float mDragDistance = 0.0f;  // pixels moved since the press
};

}  // namespace Showcase
