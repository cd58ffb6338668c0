#include "Controls.h"

#include <algorithm>
#include <cmath>

using namespace Velun;

namespace Showcase {

namespace {

// Key symbols as the SDL input provider reports them.
enum Key { KeyEscape = 27, KeyUp = 273, KeyDown = 274, KeyRight = 275, KeyLeft = 276 };

void quit() { VelunCore::getSingleton().getProcessManager().stop(false); }

}  // namespace

void Orbit::apply(Transformation& place) const {
    place.reset();
    place.translate(0.0f, 0.0f, distance, false);
    place.rotateX(-pitch, false);
    place.rotateY(yaw, false);
    place.translate(target[0], target[1], target[2], false);
}

Point Orbit::eye() const {
    float across = distance * std::cos(pitch);
    return Point(target[0] + across * std::sin(yaw), target[1] + distance * std::sin(pitch),
                 target[2] + across * std::cos(yaw));
}

Controls::Controls(Orbit& orbit, Transformation& place, std::function<void(int, int)> pick)
    : mOrbit(orbit), mPlace(place), mPick(std::move(pick)) {}

bool Controls::processEvent(InputEvent& event) {
    if (SysWMEventInfo* wm = event.getSysWMEventInfo()) {
        if (wm->getEventType() != SysWMEventInfo::SysWMQuit)
            return false;
        quit();
        return true;
    }
    if (KeyEventInfo* info = event.getKeyEventInfo())
        return key(*info);
    if (ButtonEventInfo* info = event.getButtonEventInfo())
        return button(*info);
    if (MoveEventInfo* info = event.getMoveEventInfo())
        return move(*info);
    return false;
}

bool Controls::key(const KeyEventInfo& key) {
    if (key.getEventType() != KeyEventInfo::KeyPressed)
        return false;
    switch (key.getKeySymbol()) {
    case KeyEscape:
        quit();
        return true;
    case KeyLeft:
        mOrbit.yaw -= 0.1f;
        break;
    case KeyRight:
        mOrbit.yaw += 0.1f;
        break;
    case KeyUp:
        zoom(-mOrbit.distance * 0.08f);
        return true;
    case KeyDown:
        zoom(mOrbit.distance * 0.08f);
        return true;
    default:
        return false;
    }
    mOrbit.apply(mPlace);
    return true;
}

bool Controls::button(const ButtonEventInfo& button) {
    bool pressed = button.getEventType() == ButtonEventInfo::ButtonPressed;
    switch (button.getButtonNr()) {
    case 1:
        // A click is a press and release without a drag in between.
        if (!pressed && mDragging && mDragDistance < 4.0f && mPick)
            mPick(button.getX(), button.getY());
        mDragging = pressed;
        mDragDistance = 0.0f;
        return true;
    case 4:
    case 5:
        if (pressed)
            zoom((button.getButtonNr() == 4 ? -0.08f : 0.08f) * mOrbit.distance);
        return true;
    default:
        return false;
    }
}

bool Controls::move(const MoveEventInfo& move) {
    if (!mDragging)
        return false;
    float dx = move.getRelativeX(), dy = move.getRelativeY();
    mDragDistance += std::fabs(dx) + std::fabs(dy);
    mOrbit.yaw -= dx * 0.01f;
    mOrbit.pitch = std::min(1.4f, std::max(0.05f, mOrbit.pitch + dy * 0.01f));
    mOrbit.apply(mPlace);
    return true;
}

void Controls::zoom(float step) {
    mOrbit.distance = std::min(mOrbit.maxDistance, std::max(mOrbit.minDistance, mOrbit.distance + step));
    mOrbit.apply(mPlace);
}

}  // namespace Showcase
