#pragma once

#include "velun_export.h"

namespace Velun {

// A small object with an id and a state that the EventManager runs once per pass.
// setState is its one switch: a disabled element is not run. Make elements after
// VelunCore::startup, since the id comes from the EventManager.
class VELUN_EXPORT LogicElement {
public:
    enum State {
        StateDisabled = 0,  // not run; the default
        StateReady = 1,     // runs, keeps its time, acts on nothing
        StateRunning = 2    // does its work
    };

    LogicElement();
    virtual ~LogicElement();

    virtual State getState() const;
    virtual void setState(State state);

    unsigned int getElementId() const { return mElementId; }

private:
    LogicElement(const LogicElement&);
    LogicElement& operator=(const LogicElement&);

    unsigned int mElementId;
    State mState;
};

}  // namespace Velun
