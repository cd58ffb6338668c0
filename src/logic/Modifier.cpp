#include "logic/Modifier.h"

namespace Velun {

Modifier::Modifier() {}

Modifier::~Modifier() {}

}  // namespace Velun
