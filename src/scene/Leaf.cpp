#include "scene/Leaf.h"

namespace Velun {

Leaf::Leaf(NodeType type) : Node(type) { setKind(KindLeaf); }

Leaf::Leaf(NodeType type, std::string const& name) : Node(type, name) { setKind(KindLeaf); }

Leaf::Leaf(NodeType type, std::string const& name, std::string const& uniqueName)
    : Node(type, name, uniqueName) {
    setKind(KindLeaf);
}

Leaf::~Leaf() {}

}  // namespace Velun
