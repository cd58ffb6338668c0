#include "logic/LogicElement.h"

#include "core/VelunCore.h"
#include "logic/EventManager.h"

namespace Velun {

LogicElement::LogicElement()
    : mElementId(VelunCore::getSingleton().getEventManager().createElementId()), mState(StateDisabled) {}

LogicElement::~LogicElement() {
    // An element released after shutdown has no manager to return its id to.
    if (EventManager* manager = VelunCore::getSingleton().findEventManager())
        manager->returnElementId(mElementId);
}

LogicElement::State LogicElement::getState() const { return mState; }

void LogicElement::setState(State state) { mState = state; }

}  // namespace Velun
