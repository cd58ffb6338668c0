#include "material/MaterialManager.h"

namespace Velun {

MaterialManager::MaterialManager() {}

MaterialManager::~MaterialManager() {}

}  // namespace Velun
