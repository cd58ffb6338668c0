#include "render/Capabilities.h"

namespace Velun {

Capabilities::Capabilities() {}

Capabilities::~Capabilities() {}

}  // namespace Velun
