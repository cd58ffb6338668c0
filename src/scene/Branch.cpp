#include "scene/Branch.h"

namespace Velun {

Branch::Branch() : Group(TypeGroup) {}

Branch::Branch(std::string const& name) : Group(TypeGroup, name) {}

Branch::Branch(std::string const& name, std::string const& uniqueName) : Group(TypeGroup, name, uniqueName) {}

Branch::~Branch() {}

}  // namespace Velun
