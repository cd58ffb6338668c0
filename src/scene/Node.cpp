#include "scene/Node.h"

#include "core/VelunCore.h"
#include "scene/Group.h"
#include "scene/SceneManager.h"
#include "scene/SceneRoot.h"

namespace Velun {

Node::Node(NodeType type) : Node(type, std::string(), std::string()) {}

Node::Node(NodeType type, std::string const& name) : Node(type, name, std::string()) {}

Node::Node(NodeType type, std::string const& name, std::string const& uniqueName)
    : mNodeType(static_cast<unsigned char>(type)), mNodeStatus(StatusNew), mKind(KindNode), mUpdating(false),
      mParent(nullptr), mTransformedNode(this), mSceneRoot(nullptr),
      mNodeId(VelunCore::getSingleton().getSceneManager().createNodeId()), mDetails(nullptr) {
    if (!name.empty() || !uniqueName.empty()) {
        details().mName = name;
        details().mUniqueName = uniqueName;
    }
}

Node::~Node() {
    if (mParent)
        mParent->Group::detachChild(mNodeId);
    if (mSceneRoot)
        Node::detachSceneRoot();
    delete mDetails;
}

Node::Details& Node::details() {
    if (!mDetails)
        mDetails = new Details();
    return *mDetails;
}

std::string Node::getName() const { return mDetails ? mDetails->mName : std::string(); }

std::string Node::getUniqueName() const { return mDetails ? mDetails->mUniqueName : std::string(); }

void Node::update(bool) {}

void Node::setProperty(std::string const& key, std::string const& value) {
    details().mProperties.put(key, value);
}

bool Node::hasProperty(std::string const& key) const {
    return mDetails && mDetails->mProperties.containsKey(key);
}

std::string Node::getProperty(std::string const& key) { return details().mProperties[key]; }

bool Node::isModified(bool ownChangesOnly) const {
    if (ownChangesOnly && mNodeStatus == StatusChildModified)
        return false;
    return mNodeStatus != StatusUpdated;
}

bool Node::attachSceneRoot(SceneRoot& root) {
    if (mSceneRoot)
        return false;
    mSceneRoot = &root;
    root.attachNode(*this);
    setModified(false);
    return true;
}

bool Node::detachSceneRoot() {
    if (mSceneRoot) {
        mSceneRoot->detachNode(*this);
        mSceneRoot = nullptr;
    }
    setModified(false);
    return true;
}

void Node::setModified(bool childChanged) {
    if (mNodeStatus != StatusModified && !(childChanged && mNodeStatus == StatusChildModified))
        mNodeStatus = childChanged ? StatusChildModified : StatusModified;
    // The walk goes on to the parent whatever this node's own status was, so that a
    // node that keeps its mark between passes (a leaf) still reaches its ancestors.
    for (Group* p = mParent; p; p = p->mParent) {
        if (p->mNodeStatus == StatusChildModified || p->mNodeStatus == StatusModified)
            break;
        p->mNodeStatus = StatusChildModified;
    }
}

}  // namespace Velun
