#include "scene/TransformationNode.h"

namespace Velun {

TransformationNode::TransformationNode() : Group(TypeTransformation) {}

TransformationNode::TransformationNode(std::string const& name) : Group(TypeTransformation, name) {}

TransformationNode::TransformationNode(std::string const& name, std::string const& uniqueName)
    : Group(TypeTransformation, name, uniqueName) {}

TransformationNode::~TransformationNode() {}

Node* TransformationNode::setChild(Node& child) {
    Node* old = detachChild();
    Group::attachChild(child);
    return old;
}

Node* TransformationNode::detachChild() {
    if (getAttachedChildCount() == 0)
        return nullptr;
    return Group::detachChild(getAttachedChild(0)->getNodeId());
}

void TransformationNode::onModified() { setModified(false); }

}  // namespace Velun
