#pragma once

#include "logic/LogicElement.h"
#include "velun_export.h"

namespace Velun {

// A logic element that watches something. The engine brings no sensor of its own;
// the EventManager accepts them through registerSensor without running them.
class VELUN_EXPORT Sensor : public LogicElement {
public:
    Sensor();
    ~Sensor() override;
};

}  // namespace Velun
