#pragma once

#include <cstdint>
#include <string>

#include "foundation/LinkedMap.h"
#include "scene/TransformedNode.h"
#include "velun_export.h"

namespace Velun {

class Group;
class SceneRoot;

// Base of everything in a scene tree. A node has a process-wide id, optional names,
// free string properties, a parent link, the scene it is attached to, and a status
// that tells the update pass what changed since its last visit. The tree owns no
// node: whoever creates a node deletes it; a node's destructor detaches it from its
// parent first.
class VELUN_EXPORT Node {
    friend class Group;
    friend class SceneRoot;

public:
    // Fixed at construction; tells the render side and the update pass how to treat
    // the node.
    enum NodeType {
        TypeGroup = 0,
        TypeLight = 1,
        TypeCamera = 2,
        TypeObject = 3,
        TypeTransformation = 4,
        TypeSound = 5
    };
    enum NodeStatus {
        StatusNew = 0,            // constructed, never updated
        StatusChildModified = 1,  // unchanged itself, something below changed
        StatusModified = 2,       // changed itself
        StatusUpdated = 3         // finished by the update pass, unchanged since
    };

    virtual ~Node();

    Node(Node const&) = delete;
    Node& operator=(Node const&) = delete;

    // Called by the update pass on the way down (true) and, for groups, on the way
    // back up with the children's volumes complete (false).
    virtual void update(bool entering);

    virtual void setProperty(std::string const& key, std::string const& value);
    virtual bool hasProperty(std::string const& key) const;
    // An unknown key gives the empty string and is entered with it.
    virtual std::string getProperty(std::string const& key);

    std::uint64_t getNodeId() const { return mNodeId; }
    NodeType getNodeType() const { return static_cast<NodeType>(mNodeType); }
    NodeStatus getNodeStatus() const { return static_cast<NodeStatus>(mNodeStatus); }
    std::string getName() const;
    std::string getUniqueName() const;
    SceneRoot* getSceneRoot() const { return mSceneRoot; }
    bool isAttached() const { return mSceneRoot != nullptr; }
    Group* getParent() const { return mParent; }

    // A Leaf or a Group, without a cast.
    bool isLeaf() const { return mKind == KindLeaf; }
    bool isGroup() const { return mKind == KindGroup; }

    TransformedNode& getTransformedNode() { return mTransformedNode; }
    TransformedNode const& getTransformedNode() const { return mTransformedNode; }

    // With ownChangesOnly, a node that only has changes below it counts as unchanged.
    bool isModified(bool ownChangesOnly) const;

    // Marks the node as changed so that the next update pass refreshes its world
    // transformation and volume, e.g. after its own bounding volume changed.
    void markModified() { setModified(false); }

    void startUpdate() { mUpdating = true; }
    void finishUpdate() {
        mNodeStatus = StatusUpdated;
        mUpdating = false;
    }
    bool isUpdating() const { return mUpdating; }

protected:
    explicit Node(NodeType type);
    Node(NodeType type, std::string const& name);
    Node(NodeType type, std::string const& name, std::string const& uniqueName);

    // Hand the scene to this node (and, for a group, its subtree); false if the node
    // belongs to a scene already.
    virtual bool attachSceneRoot(SceneRoot& root);
    virtual bool detachSceneRoot();

    // Marks this node as changed itself (false) or below (true); the ancestors learn
    // that something below them changed, up to the first one that knows already.
    void setModified(bool childChanged);
    void setParent(Group* parent) { mParent = parent; }

    enum Kind : unsigned char { KindNode = 0, KindLeaf = 1, KindGroup = 2 };
    void setKind(Kind kind) { mKind = kind; }

private:
    // Names and properties, made when first needed: most nodes have none, and the
    // walks read nodes faster when they are small.
    struct Details {
        std::string mName;
        std::string mUniqueName;
        Dorvan::LinkedMap<std::string, std::string> mProperties;
    };
    Details& details();

    // What the walks read comes first: type, status and parent share the first cache
    // line with the world volume's state, whose extents fill the second, so that culling
    // a node reads two lines. Small fields keep the node small, which is what a walk over
    // many nodes pays for.
    unsigned char mNodeType;
    unsigned char mNodeStatus;
    Kind mKind;
    bool mUpdating;
    Group* mParent;
    TransformedNode mTransformedNode;
    SceneRoot* mSceneRoot;
    std::uint64_t mNodeId;
    Details* mDetails;
};

}  // namespace Velun
