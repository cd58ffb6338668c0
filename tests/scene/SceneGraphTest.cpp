#include <cmath>

#include "SceneFixture.h"
#include "scene/Camera.h"
#include "scene/Light.h"
#include "scene/Overlay.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/View.h"

using namespace Velun;
using namespace SceneTest;
using Dorvan::SharedPtr;

namespace {

class SceneManagerTest : public EngineTest {
protected:
    SceneManager& scenes() { return core.getSceneManager(); }
};

TEST_F(SceneManagerTest, NodesAttachDetachAndMarkTheirAncestors) {
    Branch top, group, other;
    BoxLeaf first, second, third, survivor;
    top.attachChild(group);
    EXPECT_EQ(group.attachChild(second), 0);
    EXPECT_EQ(group.attachChild(first), 1);
    EXPECT_EQ(group.attachChild(third), 2);
    EXPECT_EQ(group.getAttachedChild(0), &second);
    EXPECT_EQ(group.getAttachedChildById(first.getNodeId()), &first);

    // A node with a parent stays where it is; a group cannot go below itself.
    Node::NodeStatus before = first.getNodeStatus();
    EXPECT_EQ(other.attachChild(first), -1);
    EXPECT_EQ(first.getParent(), &group);
    EXPECT_EQ(first.getNodeStatus(), before);
    EXPECT_EQ(other.getNodeStatus(), Node::StatusNew);
    EXPECT_EQ(group.attachChild(group), -1);
    EXPECT_EQ(group.attachChild(top), -1);

    // Nor can the root of a scene, though it has no parent.
    SceneRoot scene(1);
    EXPECT_EQ(other.attachChild(*scene.getRoot()), -1);
    EXPECT_EQ(other.getAttachedChildCount(), 0);

    // Detached or destroyed nodes leave their parent and children.
    EXPECT_EQ(group.detachChild(9999999), nullptr);
    EXPECT_EQ(group.detachChild(second.getNodeId()), &second);
    EXPECT_EQ(second.getParent(), nullptr);
    EXPECT_EQ(second.getNodeStatus(), Node::StatusNew);
    EXPECT_EQ(group.getAttachedChild(1), &third);

    scene.getRoot()->attachChild(top);
    EXPECT_TRUE(first.isAttached());
    group.detachChild(first.getNodeId());
    EXPECT_FALSE(first.isAttached());
    EXPECT_EQ(first.getNodeStatus(), Node::StatusModified);

    EXPECT_TRUE(group.detachChilds());
    EXPECT_FALSE(third.isAttached());
    EXPECT_EQ(third.getParent(), nullptr);
    EXPECT_TRUE(group.detachChilds());

    {
        Branch child;
        BoxLeaf leaf;
        group.attachChild(child);
        group.attachChild(leaf);
        child.attachChild(survivor);
        group.finishUpdate();
    }
    EXPECT_EQ(group.getAttachedChildCount(), 0);
    EXPECT_EQ(group.getNodeStatus(), Node::StatusModified);
    EXPECT_EQ(survivor.getParent(), nullptr);

    Branch middle;
    BoxLeaf leaf;
    chain({&top, &middle, &leaf});
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

// A camera's view looks from its world place: its matrix is the inverse placement. Deleted
// scenes and overlays and the shutdown leave no pointer to them.
TEST_F(SceneManagerTest, ACameraViewSeesFromTheCameraWorldPlaceAndNothingPointsToDeletedScenes) {
    SceneGraph& scene = scenes().createSceneGraph();
    TransformationNode place;
    Camera viewer;
    place.translate(3.0f, 0.0f, 5.0f, false);
    place.rotateY(0.5f, true);
    chain({scene.getRoot(), &place, &viewer});
    scene.getUpdateTraverser()->run(0);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(viewer.getView(0.0f).isNull());
    EXPECT_EQ("Camera::getView: the aspect must be a positive number, not 0\n",
              testing::internal::GetCapturedStderr());
    SharedPtr<View> view = viewer.getView(1.5f);
    ASSERT_FALSE(view.isNull());
    Dorvan::Matrix<float, 4> const& toView = view->getFrustrum()->getViewMatrix();
    expectPoint(Point(toView * Point(3.0f, 0.0f, 5.0f)), 0, 0, 0);
    expectPoint(Point(toView * Point(3.0f - 2.0f * std::sin(0.5f), 0.0f, 5.0f - 2.0f * std::cos(0.5f))), 0, 0,
                -2.0f);

    SceneGraph& doomed = scenes().createSceneGraph();
    SceneGraph& kept = scenes().createSceneGraph();
    Branch group;
    Light light;
    chain({doomed.getRoot(), &group, &light});

    EXPECT_TRUE(scenes().deleteSceneGraph(doomed));
    EXPECT_EQ(&kept, scenes().getSceneGraph(1));
    ASSERT_EQ(2u, scenes().getProcessList()->size());
    EXPECT_EQ(&kept,
              static_cast<SceneManager::UpdateAdapter*>(scenes().getProcessList()->at(1))->getSceneRoot());
    EXPECT_FALSE(group.isAttached());
    EXPECT_FALSE(light.isAttached());
    EXPECT_EQ(nullptr, group.getParent());
    EXPECT_EQ(&group, light.getParent());

    std::unique_ptr<Camera> camera(new Camera()), first(new Camera());
    std::unique_ptr<Light> hudLight(new Light());
    Overlay& overlay = scenes().createOverlay();
    first->setOverlay(overlay);
    first.reset();  // a camera may end before its overlay
    camera->setOverlay(overlay);
    EXPECT_TRUE(scenes().deleteOverlay(overlay));
    EXPECT_EQ(nullptr, camera->getOverlay());
    EXPECT_TRUE(camera->getOverlayView(1.0f).isNull());

    kept.getRoot()->attachChild(*camera);
    Overlay& hud = scenes().createOverlay();
    hud.getRoot()->attachChild(*hudLight);
    camera->setOverlay(hud);
    core.shutdown();
    EXPECT_FALSE(camera->isAttached());
    EXPECT_FALSE(hudLight->isAttached());
    EXPECT_EQ(nullptr, camera->getOverlay());
    EXPECT_EQ(nullptr, camera->getParent());
}

}  // namespace
