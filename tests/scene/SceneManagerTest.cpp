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

}  // namespace
