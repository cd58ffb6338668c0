#include "SceneFixture.h"

#include "scene/SceneRoot.h"

using SceneTest::BoxLeaf;
using Velun::Branch;
using Velun::Node;
using Velun::SceneRoot;

namespace {

class NodeTest : public SceneTest::EngineTest {};

TEST_F(NodeTest, IdsNamesAndProperties) {
    Branch a("first", "unique-first");
    BoxLeaf b;
    EXPECT_GT(a.getNodeId(), 0u);
    EXPECT_EQ(b.getNodeId(), a.getNodeId() + 1);
    EXPECT_EQ(a.getName(), "first");
    EXPECT_EQ(a.getUniqueName(), "unique-first");
    EXPECT_EQ(a.getNodeType(), Node::TypeGroup);
    EXPECT_EQ(a.getNodeStatus(), Node::StatusNew);
    EXPECT_TRUE(a.isGroup());
    EXPECT_TRUE(b.isLeaf());
    EXPECT_FALSE(a.isAttached());
    EXPECT_TRUE(a.isModified(true));

    a.setProperty("colour", "red");
    EXPECT_TRUE(a.hasProperty("colour"));
    EXPECT_EQ(a.getProperty("colour"), "red");
    EXPECT_FALSE(a.hasProperty("size"));
    EXPECT_EQ(a.getProperty("size"), "");
    EXPECT_TRUE(a.hasProperty("size"));
}

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

TEST_F(NodeTest, AttachingASubtreeToASceneMarksEveryNode) {
    SceneRoot scene(1);
    Branch group, inner;
    BoxLeaf a, b;
    group.attachChild(inner);
    inner.attachChild(a);
    group.attachChild(b);
    scene.getRoot()->attachChild(group);
    for (Node* n : std::initializer_list<Node*>{&group, &inner, &a, &b}) {
        EXPECT_EQ(n->getSceneRoot(), &scene);
        EXPECT_EQ(n->getNodeStatus(), Node::StatusModified);
    }
    EXPECT_EQ(scene.getRoot()->getNodeStatus(), Node::StatusModified);
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

TEST_F(NodeTest, MovingASubtreeBetweenParents) {
    SceneRoot scene(1);
    Branch left, right, moving;
    BoxLeaf leaf;
    scene.getRoot()->attachChild(left);
    scene.getRoot()->attachChild(right);
    left.attachChild(moving);
    moving.attachChild(leaf);

    Node* taken = left.detachChild(moving.getNodeId());
    ASSERT_EQ(taken, &moving);
    EXPECT_FALSE(leaf.isAttached());
    EXPECT_EQ(right.attachChild(moving), 0);
    EXPECT_EQ(moving.getParent(), &right);
    EXPECT_EQ(leaf.getSceneRoot(), &scene);
    EXPECT_EQ(left.getAttachedChildCount(), 0);
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
