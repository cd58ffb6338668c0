#include "logic/FollowModifier.h"

#include <algorithm>
#include <cmath>

#include "core/VelunCore.h"
#include "scene/Node.h"

namespace Velun {

namespace {
const float TwoPi = 6.2831855f;
// Share of the remaining distance closed per second.
const float ClosingRate = 10.0f;
}  // namespace

FollowModifier::FollowModifier() : mSource(nullptr), mFollowerTransformation(nullptr), mRotationY(0.0f) {}

FollowModifier::~FollowModifier() {}

void FollowModifier::setState(State state) {
    Modifier::setState(state);
    if (state != StateRunning)
        mClock.clear();
}

void FollowModifier::sourceFrame(Point& position, Dorvan::TVector<float, 3>& direction) const {
    Dorvan::Matrix<float, 4> const& world = mSource->getTransformedNode().getWorldTransformation();
    position = Point(world * Point(0.0f, 0.0f, 0.0f));
    Point ahead(world * Point(0.0f, 0.0f, 1.0f));
    direction =
        Dorvan::TVector<float, 3>(ahead[0] - position[0], ahead[1] - position[1], ahead[2] - position[2]);
}

int FollowModifier::run(std::int64_t timestamp) {
    float dt = 0.0f;
    if (!mClock.step(*this, timestamp, mSource && mFollowerTransformation, dt))
        return 0;
    Point sourcePosition;
    Dorvan::TVector<float, 3> sourceDirection;
    sourceFrame(sourcePosition, sourceDirection);
    // The angle first: calcTranslation moves the present position even if the check vetoes.
    float rotationY = calcRotationY(sourcePosition, sourceDirection, dt, timestamp);
    Point position = calcTranslation(sourcePosition, sourceDirection, dt, timestamp);
    if (!checkPosition(sourcePosition, sourceDirection, rotationY, position, dt, timestamp))
        return 0;
    mRotationY = rotationY;
    mFollowerTransformation->reset();
    mFollowerTransformation->multMatrix(mOffsetTransformation.getLocalTransformation(), 0.0f);
    mFollowerTransformation->rotateY(rotationY, false);
    mFollowerTransformation->translate(position[0], position[1], position[2], false);
    return 0;
}

void FollowModifier::setToPoint(Point const& point, float rotationY) {
    mPosition = point;
    mRotationY = rotationY;
}

void FollowModifier::setToSource() {
    if (!mSource) {
        VelunCore::getLogger("logic")->error("FollowModifier::setToSource: no source node is set");
        return;
    }
    Point position;
    Dorvan::TVector<float, 3> direction;
    sourceFrame(position, direction);
    mRotationY = headingOf(direction);
}

float FollowModifier::headingOf(Dorvan::TVector<float, 3> const& direction) {
    Dorvan::TVector<float, 3> flat(direction[0], 0.0f, direction[2]);
    Dorvan::TVector<float, 3> n = flat.normalized();
    float angle = std::acos(std::max(-1.0f, std::min(1.0f, n[2])));
    if (direction[0] < 0.0f)
        angle = TwoPi - angle;
    return angle;
}

float FollowModifier::calcRotationY(Point const&, Dorvan::TVector<float, 3> const& sourceDirection, float,
                                    std::int64_t) {
    return headingOf(sourceDirection);
}

Point FollowModifier::calcTranslation(Point const& sourcePosition, Dorvan::TVector<float, 3> const&, float dt,
                                      std::int64_t) {
    // Clamped, so a long frame lands on the source instead of overshooting it.
    float fraction = std::max(0.0f, std::min(1.0f, dt * ClosingRate));
    mPosition = Point(mPosition + (sourcePosition - mPosition) * fraction);
    return mPosition;
}

bool FollowModifier::checkPosition(Point const&, Dorvan::TVector<float, 3> const&, float&, Point&, float,
                                   std::int64_t) {
    return true;
}

}  // namespace Velun
