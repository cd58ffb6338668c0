#pragma once

#include "logic/LogicElement.h"
#include "velun_export.h"

namespace Velun {

// A logic element that decides between others. The engine brings no controller of
// its own; the EventManager accepts them through registerController without running them.
class VELUN_EXPORT Controller : public LogicElement {
public:
    Controller();
    ~Controller() override;
};

}  // namespace Velun
