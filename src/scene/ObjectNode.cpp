#include "scene/ObjectNode.h"

namespace Velun {

ObjectNode::ObjectNode() : Group(TypeObject) {}

ObjectNode::ObjectNode(std::string const& name) : Group(TypeObject, name) {}

ObjectNode::ObjectNode(std::string const& name, std::string const& uniqueName)
    : Group(TypeObject, name, uniqueName) {}

ObjectNode::~ObjectNode() {}

}  // namespace Velun
