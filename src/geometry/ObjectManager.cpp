#include "geometry/ObjectManager.h"

namespace Velun {

ObjectManager::ObjectManager() {}

ObjectManager::~ObjectManager() {}

}  // namespace Velun
