#include "SceneFixture.h"

#include <cmath>

#include "scene/SceneRoot.h"

using namespace Velun;
using namespace SceneTest;
using Dorvan::SharedPtr;

namespace {

Point worldOrigin(Node const& node) {
    return Point(node.getTransformedNode().getWorldTransformation() * Point());
}

BoundingBox const& worldBox(Node const& node) { return node.getTransformedNode().getBoundingBox(); }

void expectBox(BoundingBox const& box, Point const& min, Point const& max) {
    ASSERT_EQ(box.getState(), BoundingVolume::StateBounded);
    expectPoint(box.getMin(), min[0], min[1], min[2]);
    expectPoint(box.getMax(), max[0], max[1], max[2]);
}

class UpdateTraverserTest : public EngineTest {
protected:
    void update() { EXPECT_EQ(scene.getUpdateTraverser()->run(0), 0); }
    Branch& root() { return *scene.getRoot(); }
    StartedEngine started;
    SceneRoot scene{1};
};

TEST_F(UpdateTraverserTest, WorldTransformationsFollowMovesAtEveryLevelAndNodesAttachedLater) {
    TransformationNode t1, t2, t3;
    Branch middle;
    BoxLeaf leaf(Point(-1, -1, -1), Point(1, 1, 1));
    chain({&root(), &t1, &middle, &t2, &t3, &leaf});

    t1.translate(10, 0, 0, false);
    t2.rotateZ(static_cast<float>(M_PI / 2), false);
    t3.translate(1, 0, 0, false);
    update();
    expectPoint(worldOrigin(leaf), 10, 1, 0);
    EXPECT_NEAR(worldBox(leaf).getMin()[1], 0, 1e-5f);

    t3.translate(0, 0, 5, false);
    update();
    expectPoint(worldOrigin(leaf), 10, 1, 5);

    t2.reset();
    update();
    expectPoint(worldOrigin(leaf), 11, 0, 5);

    t1.translate(0, -3, 0, false);
    update();
    expectPoint(worldOrigin(middle), 10, -3, 0);
    expectPoint(worldOrigin(leaf), 11, -3, 5);
    EXPECT_NEAR(worldBox(*root().getAttachedChild(0)).getMax()[2], 6, 1e-5f);

    // The inverse composed level by level undoes the world transformation.
    expectNear(leaf.getTransformedNode().getInverseWorldTransformation() *
                   leaf.getTransformedNode().getWorldTransformation(),
               Matrix4::identity(), 1e-5f);

    // Nodes attached later take their parent's place.
    TransformationNode place;
    Branch holder;
    chain({&root(), &place, &holder});
    place.translate(3, 0, 0, false);
    update();

    // Attached below an unmoved plain group, under a placed transformation.
    Branch late;
    BoxLeaf lateLeaf(Point(0, 0, 0), Point(1, 1, 1));
    chain({&holder, &late, &lateLeaf});
    update();
    expectPoint(worldOrigin(lateLeaf), 3, 0, 0);
    EXPECT_EQ(worldBox(place).getMax()[0], 4.0f);

    // Moved to another place: it follows at once.
    TransformationNode other;
    Branch otherHolder;
    chain({&root(), &other, &otherHolder});
    other.translate(0, 0, -8, false);
    holder.detachChild(late.getNodeId());
    otherHolder.attachChild(late);
    update();
    expectPoint(worldOrigin(lateLeaf), 0, 0, -8);
    EXPECT_EQ(worldBox(holder).getState(), BoundingVolume::StateEmpty);
    // Right below the root, whose place never moves, it takes the root's.
    otherHolder.detachChild(late.getNodeId());
    root().attachChild(late);
    update();
    expectPoint(worldOrigin(lateLeaf), 0, 0, 0);
}

TEST_F(UpdateTraverserTest, UnchangedSubtreesAreNotVisitedAndGroupVolumesEncloseTheirChildren) {
    CountingTransformation moved, still;
    CountingBranch movedGroup, stillGroup;
    BoxLeaf movedLeaf(Point(0, 0, 0), Point(1, 1, 1)), stillLeaf(Point(0, 0, 0), Point(1, 1, 1));
    chain({&root(), &moved, &movedGroup, &movedLeaf});
    chain({&root(), &still, &stillGroup, &stillLeaf});

    update();
    EXPECT_EQ(movedLeaf.mVisits, 1);

    // Nothing changed: the top nodes are visited and answer skip; nothing below them.
    update();
    EXPECT_EQ(moved.mDown, 2);
    EXPECT_EQ(moved.mUp, 1);
    EXPECT_EQ(movedGroup.mDown, 1);
    EXPECT_EQ(movedLeaf.mVisits, 1);

    moved.translate(5, 0, 0, false);
    update();
    EXPECT_EQ(movedGroup.mDown, 2);
    EXPECT_EQ(movedLeaf.mVisits, 2);
    EXPECT_EQ(still.mDown, 3);
    EXPECT_EQ(stillGroup.mDown, 1);
    EXPECT_EQ(stillLeaf.mVisits, 1);
    EXPECT_EQ(root().getNodeStatus(), Node::StatusUpdated);

    // A leaf whose own volume changed marks itself and is refreshed under unmoved parents.
    stillLeaf.mBox.merge(Point(0, 7, 0));
    stillLeaf.markModified();
    update();
    EXPECT_EQ(stillLeaf.mVisits, 2);
    EXPECT_EQ(worldBox(stillLeaf).getMax()[1], 7.0f);
    EXPECT_EQ(worldBox(still).getMax()[1], 7.0f);

    // Group volumes enclose their children; infinite leaves make them infinite.
    Branch group, lit, inner;
    TransformationNode moving, innerPlace, lightPlace;
    BoxLeaf far(Point(20, 20, 20), Point(21, 21, 21)), near(Point(0, 0, 0), Point(1, 1, 1)), camera,
        light("light", Node::TypeLight);
    light.mBox.setInfinite();  // as a light's
    light.mHasBox = true;
    chain({&root(), &group, &inner, &innerPlace, &far});
    chain({&inner, &camera});
    chain({&group, &moving, &near});
    chain({&root(), &lit, &lightPlace, &light});
    update();
    expectBox(worldBox(group), Point(0, 0, 0), Point(21, 21, 21));
    // A leaf without a volume adds nothing to its group.
    EXPECT_EQ(worldBox(camera).getState(), BoundingVolume::StateEmpty);
    expectBox(worldBox(inner), Point(20, 20, 20), Point(21, 21, 21));
    for (Node* n : std::initializer_list<Node*>{&light, &lightPlace, &lit, &root()})
        EXPECT_EQ(worldBox(*n).getState(), BoundingVolume::StateInfinite) << n->getNodeId();

    moving.translate(-5, 0, 0, false);
    lightPlace.translate(1, 1, 1, false);
    update();
    expectBox(worldBox(near), Point(-5, 0, 0), Point(-4, 1, 1));
    expectBox(worldBox(group), Point(-5, 0, 0), Point(21, 21, 21));
    EXPECT_EQ(worldBox(lit).getState(), BoundingVolume::StateInfinite);
}

}  // namespace
