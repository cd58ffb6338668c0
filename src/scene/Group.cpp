#include "scene/Group.h"

#include <algorithm>

namespace Velun {

Group::Group(NodeType type) : Node(type), mFirstChild(nullptr) { setKind(KindGroup); }

Group::Group(NodeType type, std::string const& name) : Node(type, name), mFirstChild(nullptr) {
    setKind(KindGroup);
}

Group::Group(NodeType type, std::string const& name, std::string const& uniqueName)
    : Node(type, name, uniqueName), mFirstChild(nullptr) {
    setKind(KindGroup);
}

Group::~Group() { detachChilds(); }

bool Group::isAttachedChild(std::uint64_t id) const { return mChilds.containsKey(id); }

Node* Group::getAttachedChildById(std::uint64_t id) const {
    return mChilds.containsKey(id) ? mChilds.get(id) : 0;
}

int Group::attachChild(Node& child) {
    if (child.getSceneRoot() || child.getParent())
        return -1;
    for (Node* n = this; n; n = n->getParent())
        if (n == &child)
            return -1;
    mChilds.put(child.getNodeId(), &child);
    mChildList.push_back(&child);
    mFirstChild = mChildList.front();
    setModified(false);
    child.setParent(this);
    if (getSceneRoot())
        child.attachSceneRoot(*getSceneRoot());
    return static_cast<int>(mChildList.size()) - 1;
}

Node* Group::detachChild(std::uint64_t id) {
    if (!mChilds.containsKey(id))
        return nullptr;
    Node* child = mChilds.remove(id);
    mChildList.erase(std::find(mChildList.begin(), mChildList.end(), child));
    mFirstChild = mChildList.empty() ? nullptr : mChildList.front();
    setModified(false);
    child->setParent(nullptr);
    if (getSceneRoot())
        child->detachSceneRoot();
    return child;
}

bool Group::detachChilds() {
    setModified(false);
    bool result = true;
    for (Node* child : mChildList) {
        child->setParent(nullptr);
        if (getSceneRoot() && !child->detachSceneRoot())
            result = false;
    }
    mChildList.clear();
    mFirstChild = nullptr;
    mChilds.clear();
    return result;
}

bool Group::deleteChild(std::uint64_t) { return false; }

bool Group::deleteChilds() { return false; }

bool Group::attachSceneRoot(SceneRoot& root) {
    if (!Node::attachSceneRoot(root))
        return false;
    bool result = true;
    for (Node* child : mChildList)
        if (!child->attachSceneRoot(root))
            result = false;
    return result;
}

bool Group::detachSceneRoot() {
    if (!Node::detachSceneRoot())
        return false;
    bool result = true;
    for (Node* child : mChildList)
        if (!child->detachSceneRoot())
            result = false;
    return result;
}

}  // namespace Velun
