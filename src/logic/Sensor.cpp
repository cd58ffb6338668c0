#include "logic/Sensor.h"

namespace Velun {

Sensor::Sensor() {}

Sensor::~Sensor() {}

}  // namespace Velun
