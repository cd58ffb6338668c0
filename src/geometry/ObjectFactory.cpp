#include "geometry/ObjectFactory.h"

namespace Velun {

ObjectFactory::~ObjectFactory() {}

}  // namespace Velun
