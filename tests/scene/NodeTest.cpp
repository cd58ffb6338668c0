#include "SceneFixture.h"

#include "scene/SceneRoot.h"

using SceneTest::BoxLeaf;
using Velun::Branch;
using Velun::Node;
using Velun::SceneRoot;

namespace {

class NodeTest : public SceneTest::EngineTest {};

TEST_F(NodeTest, AttachRulesAndMarks) {
    Branch top, group, other;
    BoxLeaf first, second;
    top.attachChild(group);
    EXPECT_EQ(group.attachChild(second), 0);
    EXPECT_EQ(group.attachChild(first), 1);
    EXPECT_EQ(group.getAttachedChild(0), &second);
    EXPECT_EQ(group.getAttachedChildCount(), 2);
    EXPECT_TRUE(group.isAttachedChild(first.getNodeId()));
    EXPECT_EQ(group.getAttachedChildById(first.getNodeId()), &first);
    EXPECT_EQ(group.getAttachedChildById(other.getNodeId()), nullptr);
    EXPECT_EQ(first.getParent(), &group);
    EXPECT_EQ(group.getNodeStatus(), Node::StatusModified);
    EXPECT_EQ(top.getNodeStatus(), Node::StatusModified);

    // A node with a parent stays where it is.
    Node::NodeStatus before = first.getNodeStatus();
    EXPECT_EQ(other.attachChild(first), -1);
    EXPECT_EQ(first.getParent(), &group);
    EXPECT_EQ(first.getNodeStatus(), before);
    EXPECT_EQ(other.getNodeStatus(), Node::StatusNew);

    // No cycles: a group cannot go below itself.
    EXPECT_EQ(group.attachChild(group), -1);
    EXPECT_EQ(group.attachChild(top), -1);

    // A node in a scene cannot be attached anywhere, even without a parent: the root.
    SceneRoot scene(1);
    EXPECT_EQ(scene.getRoot()->getParent(), nullptr);
    EXPECT_EQ(other.attachChild(*scene.getRoot()), -1);
    EXPECT_EQ(other.getAttachedChildCount(), 0);
}

TEST_F(NodeTest, DetachingLeavesTheChildAliveAndShiftsPositions) {
    Branch group;
    BoxLeaf a, b, c;
    group.attachChild(a);
    group.attachChild(b);
    group.attachChild(c);
    EXPECT_EQ(group.detachChild(9999999), nullptr);
    EXPECT_EQ(group.detachChild(a.getNodeId()), &a);
    EXPECT_EQ(a.getParent(), nullptr);
    EXPECT_EQ(a.getNodeStatus(), Node::StatusNew);
    EXPECT_EQ(group.getAttachedChild(0), &b);
    EXPECT_EQ(group.getAttachedChild(1), &c);

    SceneRoot scene(1);
    scene.getRoot()->attachChild(group);
    EXPECT_TRUE(b.isAttached());
    group.detachChild(b.getNodeId());
    EXPECT_FALSE(b.isAttached());
    EXPECT_EQ(b.getNodeStatus(), Node::StatusModified);

    EXPECT_TRUE(group.detachChilds());
    EXPECT_EQ(group.getAttachedChildCount(), 0);
    EXPECT_FALSE(c.isAttached());
    EXPECT_EQ(c.getParent(), nullptr);
    EXPECT_TRUE(group.detachChilds());
    EXPECT_EQ(group.getNodeStatus(), Node::StatusModified);
}

TEST_F(NodeTest, ChangesReachTheAncestors) {
    Branch top, middle;
    BoxLeaf leaf;
    top.attachChild(middle);
    middle.attachChild(leaf);
    for (Node* n : std::initializer_list<Node*>{&top, &middle})
        n->finishUpdate();

    // The leaf is still marked from before; its new change must reach the ancestors.
    leaf.markModified();
    leaf.markModified();
    EXPECT_EQ(leaf.getNodeStatus(), Node::StatusModified);
    EXPECT_EQ(middle.getNodeStatus(), Node::StatusChildModified);
    EXPECT_EQ(top.getNodeStatus(), Node::StatusChildModified);
    EXPECT_FALSE(middle.isModified(true));
    EXPECT_TRUE(middle.isModified(false));

    // A change of the node itself raises a child mark; a child mark never lowers it.
    middle.markModified();
    EXPECT_EQ(middle.getNodeStatus(), Node::StatusModified);
    leaf.markModified();
    EXPECT_EQ(middle.getNodeStatus(), Node::StatusModified);

    top.finishUpdate();
    EXPECT_FALSE(top.isModified(false));
}

TEST_F(NodeTest, DestroyedNodesLeaveTheirParentAndChildren) {
    Branch parent;
    BoxLeaf survivor;
    {
        Branch child;
        parent.attachChild(child);
        child.attachChild(survivor);
        parent.finishUpdate();
    }
    EXPECT_EQ(parent.getAttachedChildCount(), 0);
    EXPECT_EQ(parent.getNodeStatus(), Node::StatusModified);
    EXPECT_EQ(survivor.getParent(), nullptr);
    {
        BoxLeaf leaf;
        parent.attachChild(leaf);
    }
    EXPECT_EQ(parent.getAttachedChildCount(), 0);
}

}  // namespace
