#pragma once

#include <cstdint>

#include "core/Process.h"
#include "logic/Modifier.h"
#include "logic/StepClock.h"
#include "scene/Point.h"
#include "scene/TVector.h"
#include "scene/Transformation.h"
#include "velun_export.h"

namespace Velun {

class Node;

// Makes a transformation trail a source node with a smooth lag and face the way the
// source faces (about Y). Each frame the follower closes the fraction 10 * dt of its
// distance to the source (at most all of it) and turns at once to the source's
// heading. The follower is rebuilt each frame as T(position) * Ry(angle) * offset, so
// the offset transformation places it relative to that frame (e.g. behind and above).
//
// Subclasses change the behaviour through the three protected steps: the angle, the
// position, and a final check that may adjust both or veto the step.
// Source and follower are not owned and must outlive the modifier's runs.
class VELUN_EXPORT FollowModifier : public Modifier, public Process {
public:
    FollowModifier();
    ~FollowModifier() override;

    // A state other than running forgets the time, so a restart does not jump.
    void setState(State state) override;
    // Always 0.
    int run(std::int64_t timestamp) override;

    Node* getSource() const { return mSource; }
    void setSource(Node& source) { mSource = &source; }
    void unsetSource() { mSource = nullptr; }
    Transformation* getFollowerTransformation() const { return mFollowerTransformation; }
    void setFollowerTransformation(Transformation& follower) { mFollowerTransformation = &follower; }
    void unsetFollowerTransformation() { mFollowerTransformation = nullptr; }
    // Applied to the follower before its rotation and translation; identity at first.
    Transformation& getOffsetTransformation() { return mOffsetTransformation; }

    // Puts the follower's present position and angle; the next step starts from there.
    void setToPoint(Point const& point, float rotationY);
    // Takes the source's present heading as the angle; the position stays. Needs a source.
    void setToSource();

    // The follower's present position and angle (radians about Y).
    Point const& getPosition() const { return mPosition; }
    float getRotationY() const { return mRotationY; }

protected:
    // The angle about Y that turns +Z toward the source's direction, 0 to two pi. The
    // default turns at once, ignoring dt.
    virtual float calcRotationY(Point const& sourcePosition, Dorvan::TVector<float, 3> const& sourceDirection,
                                float dt, std::int64_t timestamp);
    // The follower's new position; it becomes the present position. The default closes
    // the fraction 10 * dt (at most 1) of the distance to the source.
    virtual Point calcTranslation(Point const& sourcePosition,
                                  Dorvan::TVector<float, 3> const& sourceDirection, float dt,
                                  std::int64_t timestamp);
    // Sees the proposed angle and position after both are computed, may change them,
    // and vetoes the step by answering false: the follower then stays as it was, while
    // the present position has moved on. The default accepts.
    virtual bool checkPosition(Point const& sourcePosition, Dorvan::TVector<float, 3> const& sourceDirection,
                               float& rotationY, Point& position, float dt, std::int64_t timestamp);

    // The angle about Y of a direction, with its y dropped: 0 for +Z, growing toward +X.
    static float headingOf(Dorvan::TVector<float, 3> const& direction);

private:
    void sourceFrame(Point& position, Dorvan::TVector<float, 3>& direction) const;

    Node* mSource;
    Transformation mOffsetTransformation;
    Transformation* mFollowerTransformation;
    Point mPosition;
    float mRotationY;
    StepClock mClock;
};

}  // namespace Velun
