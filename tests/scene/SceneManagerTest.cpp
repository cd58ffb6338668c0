#include "scene/SceneManager.h"

#include "SceneFixture.h"
#include "core/ProcessManager.h"
#include "scene/Camera.h"
#include "scene/Light.h"
#include "scene/Overlay.h"
#include "scene/SceneGraph.h"

using namespace Velun;
using SceneTest::BoxLeaf;

namespace {

class SceneManagerTest : public SceneTest::EngineTest {
protected:
    SceneManager& scenes() { return VelunCore::getSingleton().getSceneManager(); }
};

TEST_F(SceneManagerTest, NodeIdsStartAtOneAndScenesShareOneCounter) {
    EXPECT_EQ(3, scenes().getSubsystemId());
    Branch first;
    Branch second;
    EXPECT_EQ(1u, first.getNodeId());
    EXPECT_EQ(2u, second.getNodeId());

    SceneGraph& graph = scenes().createSceneGraph();
    Overlay& overlay = scenes().createOverlay();
    SceneGraph& nextGraph = scenes().createSceneGraph();
    EXPECT_EQ(1, graph.getSceneId());
    EXPECT_EQ(2, overlay.getSceneId());
    EXPECT_EQ(3, nextGraph.getSceneId());
    // Each scene's root is a node too.
    EXPECT_EQ(3u, graph.getRoot()->getNodeId());
    EXPECT_TRUE(graph.getRoot()->isAttached());
}

TEST_F(SceneManagerTest, ScenesAreFoundByPositionAndId) {
    SceneGraph& a = scenes().createSceneGraph();
    Overlay& hud = scenes().createOverlay();
    SceneGraph& b = scenes().createSceneGraph();
    EXPECT_EQ(2, scenes().getSceneGraphCount());
    EXPECT_EQ(1, scenes().getOverlayCount());
    EXPECT_EQ(&a, scenes().getSceneGraph(0));
    EXPECT_EQ(&b, scenes().getSceneGraph(1));
    EXPECT_EQ(&hud, scenes().getOverlay(0));
    EXPECT_EQ(&b, scenes().getSceneGraphById(b.getSceneId()));
    EXPECT_EQ(&hud, scenes().getOverlayById(hud.getSceneId()));
    EXPECT_EQ(nullptr, scenes().getSceneGraphById(hud.getSceneId()));
    EXPECT_EQ(nullptr, scenes().getOverlayById(a.getSceneId()));
    EXPECT_EQ(nullptr, scenes().getSceneGraphById(99));
    EXPECT_EQ(2, scenes().getSceneGraphCount());
}

TEST_F(SceneManagerTest, EachSceneHasOneUpdateAdapterInOrderOfCreation) {
    SceneGraph& a = scenes().createSceneGraph();
    Overlay& hud = scenes().createOverlay();
    std::vector<Process*>& processes = *scenes().getProcessList();
    ASSERT_EQ(2u, processes.size());
    EXPECT_EQ(&a, static_cast<SceneManager::UpdateAdapter*>(processes[0])->getSceneRoot());
    EXPECT_EQ(&hud, static_cast<SceneManager::UpdateAdapter*>(processes[1])->getSceneRoot());
}

TEST_F(SceneManagerTest, SceneWithoutCameraIsUpdatedInEveryPass) {
    SceneGraph& scene = scenes().createSceneGraph();
    TransformationNode place;
    BoxLeaf box(Point(-1.0f, -1.0f, -1.0f), Point(1.0f, 1.0f, 1.0f));
    place.setChild(box);
    scene.getRoot()->attachChild(place);
    ProcessManager& processes = VelunCore::getSingleton().getProcessManager();

    place.translate(5.0f, 0.0f, 0.0f, false);
    processes.updateSubsystem(3, true);
    EXPECT_EQ(1, box.mVisits);
    EXPECT_FLOAT_EQ(5.0f, box.getTransformedNode().getWorldTransformation()(0, 3));

    place.translate(1.0f, 0.0f, 0.0f, false);
    processes.updateSubsystem(3, true);
    EXPECT_EQ(2, box.mVisits);
    EXPECT_FLOAT_EQ(6.0f, box.getTransformedNode().getWorldTransformation()(0, 3));
    scene.getRoot()->detachChilds();
    place.detachChild();
}

TEST_F(SceneManagerTest, DeletingASceneDestroysItAndItsAdapterAndLeavesItsNodes) {
    SceneGraph& doomed = scenes().createSceneGraph();
    SceneGraph& kept = scenes().createSceneGraph();
    Branch group;
    Light light;
    group.attachChild(light);
    doomed.getRoot()->attachChild(group);
    ASSERT_TRUE(light.isAttached());

    EXPECT_TRUE(scenes().deleteSceneGraph(doomed));
    EXPECT_EQ(1, scenes().getSceneGraphCount());
    EXPECT_EQ(&kept, scenes().getSceneGraph(0));
    ASSERT_EQ(1u, scenes().getProcessList()->size());
    EXPECT_EQ(&kept,
              static_cast<SceneManager::UpdateAdapter*>(scenes().getProcessList()->at(0))->getSceneRoot());
    EXPECT_FALSE(group.isAttached());
    EXPECT_FALSE(light.isAttached());
    EXPECT_EQ(nullptr, group.getParent());
    EXPECT_EQ(&group, light.getParent());
    group.detachChilds();
}

TEST_F(SceneManagerTest, DeleteRefusesSceneOfAnotherKindOrManager) {
    SceneGraph& graph = scenes().createSceneGraph();
    Overlay& overlay = scenes().createOverlay();
    SceneGraph stray(graph.getSceneId());
    EXPECT_FALSE(scenes().deleteSceneGraph(stray));
    EXPECT_TRUE(scenes().deleteOverlay(overlay));
    EXPECT_EQ(0, scenes().getOverlayCount());
    EXPECT_EQ(1, scenes().getSceneGraphCount());
    EXPECT_EQ(1u, scenes().getProcessList()->size());
}

TEST_F(SceneManagerTest, ShutdownDestroysScenesAndDetachesTheirNodes) {
    Camera* camera = new Camera();
    Light* light = new Light();
    SceneGraph& scene = scenes().createSceneGraph();
    Overlay& hud = scenes().createOverlay();
    scene.getRoot()->attachChild(*camera);
    hud.getRoot()->attachChild(*light);
    camera->setOverlay(hud);

    VelunCore::getSingleton().shutdown();
    EXPECT_FALSE(camera->isAttached());
    EXPECT_FALSE(light->isAttached());
    EXPECT_EQ(nullptr, camera->getOverlay());
    EXPECT_EQ(nullptr, camera->getParent());
    delete camera;
    delete light;
    VelunCore::getSingleton().startup();
}

TEST(SceneManagerLifetime, RepeatedStartupWithScenesLeavesNothingBehind) {
    for (int round = 0; round < 5; ++round) {
        VelunCore::getSingleton().startup();
        SceneManager& scenes = VelunCore::getSingleton().getSceneManager();
        SceneGraph& scene = scenes.createSceneGraph();
        Overlay& hud = scenes.createOverlay();
        scenes.createSceneGraph();
        Camera camera;
        scene.getRoot()->attachChild(camera);
        camera.setOverlay(hud);
        VelunCore::getSingleton().getProcessManager().updateSubsystem(3, true);
        EXPECT_EQ(2, scenes.getSceneGraphCount());
        VelunCore::getSingleton().shutdown();
    }
}

}  // namespace
