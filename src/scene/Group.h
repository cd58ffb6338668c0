#pragma once

#include <vector>

#include "foundation/IdMap.h"
#include "scene/Node.h"
#include "velun_export.h"

namespace Velun {

// A node with children, kept in the order of attachment. A group owns no child: its
// destructor detaches them and leaves them alive.
class VELUN_EXPORT Group : public Node {
    friend class Node;

public:
    ~Group() override;

    int getAttachedChildCount() const { return static_cast<int>(mChildList.size()); }
    // Unchecked: the caller stays below the count.
    Node* getAttachedChild(int position) const { return position == 0 ? mFirstChild : mChildList[position]; }
    bool isAttachedChild(std::uint64_t id) const;
    // Null for an id that is no child of this group.
    Node* getAttachedChildById(std::uint64_t id) const;

protected:
    explicit Group(NodeType type);
    Group(NodeType type, std::string const& name);
    Group(NodeType type, std::string const& name, std::string const& uniqueName);

    // The child's position, or -1 if it has a parent or a scene already (or would
    // close a cycle). Hands this group's scene to the child's subtree.
    int attachChild(Node& child);
    // The detached child, or null for an id that is no child.
    Node* detachChild(std::uint64_t id);
    // False if a child refused to leave the scene; the group ends without children.
    bool detachChilds();
    // Reserved: the tree owns no node. Both do nothing and return false.
    bool deleteChild(std::uint64_t id);
    bool deleteChilds();

    bool attachSceneRoot(SceneRoot& root) override;
    bool detachSceneRoot() override;

private:
    // The children by position, for the walks. The first is kept in the group too: most
    // groups (a transformation, an object's parts) have one child, and a walk stepping
    // down then needs no further cache line.
    std::vector<Node*> mChildList;
    Node* mFirstChild;
    mutable Dorvan::IdMap<Node*, std::uint64_t> mChilds;
};

}  // namespace Velun
