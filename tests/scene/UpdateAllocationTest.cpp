#include "SceneFixture.h"

#include <vector>

#include "CountingAllocator.h"
#include "scene/SceneRoot.h"
#include "scene/UpdateTraverser.h"

namespace {

using SceneTest::BoxLeaf;
using Velun::Branch;
using Velun::Node;
using Velun::Point;
using Velun::SceneRoot;
using Velun::TransformationNode;

class UpdateAllocationTest : public SceneTest::EngineTest {};

std::size_t allocationsDuring(SceneRoot& scene) {
    SceneTest::startCountingAllocations();
    scene.getUpdateTraverser()->run(0);
    return SceneTest::stopCountingAllocations();
}

TEST_F(UpdateAllocationTest, ThePassAllocatesNothing) {
    SceneRoot scene(1);
    std::vector<std::unique_ptr<Node>> nodes;
    std::vector<TransformationNode*> places;
    for (int g = 0; g < 4; ++g) {
        Branch* group = new Branch();
        nodes.emplace_back(group);
        scene.getRoot()->attachChild(*group);
        for (int t = 0; t < 5; ++t) {
            TransformationNode* place = new TransformationNode();
            Branch* holder = new Branch();
            nodes.emplace_back(place);
            nodes.emplace_back(holder);
            places.push_back(place);
            group->attachChild(*place);
            place->setChild(*holder);
            for (int l = 0; l < 10; ++l) {
                BoxLeaf* leaf = new BoxLeaf(Point(0, 0, 0), Point(1, 1, 1));
                nodes.emplace_back(leaf);
                holder->attachChild(*leaf);
            }
        }
    }

    SceneTest::startCountingAllocations();
    for (TransformationNode* place : places)
        place->rotateY(0.1f, false);
    EXPECT_EQ(SceneTest::stopCountingAllocations(), 0u) << "moving a transformation";

    // The first pass may grow the traverser's stack to the depth of the tree.
    scene.getUpdateTraverser()->run(0);
    EXPECT_EQ(allocationsDuring(scene), 0u) << "pass with nothing changed";
    places[7]->translate(1, 0, 0, false);
    EXPECT_EQ(allocationsDuring(scene), 0u) << "pass after one move";
    for (TransformationNode* place : places)
        place->translate(0, 1, 0, true);
    EXPECT_EQ(allocationsDuring(scene), 0u) << "pass after every transformation moved";
    // Computing inverses, each node makes room for its inverse once.
    scene.getUpdateTraverser()->getUpdateHandler().setCalcInverse(true);
    for (TransformationNode* place : places)
        place->scale(2, false);
    scene.getUpdateTraverser()->run(0);
    for (TransformationNode* place : places)
        place->scale(0.5f, false);
    EXPECT_EQ(allocationsDuring(scene), 0u) << "pass computing inverses";

    for (auto it = nodes.rbegin(); it != nodes.rend(); ++it)
        it->reset();
}

}  // namespace
