#pragma once

#include "logic/LogicElement.h"
#include "velun_export.h"

namespace Velun {

// A logic element that changes something in each frame. Concrete modifiers derive
// from Modifier and from Process, in this order, and are registered with
// EventManager::registerModifier.
class VELUN_EXPORT Modifier : public LogicElement {
public:
    Modifier();
    ~Modifier() override;
};

}  // namespace Velun
