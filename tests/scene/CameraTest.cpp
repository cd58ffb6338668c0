#include "scene/Camera.h"

#include <cmath>

#include "SceneFixture.h"
#include "scene/Frustrum.h"
#include "scene/Overlay.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/UpdateTraverser.h"
#include "scene/View.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace {

class CameraTest : public SceneTest::EngineTest {
protected:
    SceneManager& scenes() { return VelunCore::getSingleton().getSceneManager(); }
};

TEST_F(CameraTest, ViewSeesFromTheCameraWorldPlace) {
    SceneGraph& scene = scenes().createSceneGraph();
    TransformationNode place;
    Camera camera;
    place.translate(3.0f, 0.0f, 5.0f, false);
    place.setChild(camera);
    scene.getRoot()->attachChild(place);
    scene.getUpdateTraverser()->run(0);

    SharedPtr<RenderSettings> settings(new RenderSettings());
    camera.getCamSettings().setRenderSettings(settings);
    SharedPtr<View> view = camera.getView(1.5f);
    ASSERT_FALSE(view.isNull());
    EXPECT_EQ(&scene, &view->getSceneRoot());
    EXPECT_EQ(settings, view->getRenderSettings());
    EXPECT_FLOAT_EQ(1.5f, view->getFrustrum()->getAspect());
    Dorvan::Matrix<float, 4> const& m = view->getFrustrum()->getViewMatrix();
    EXPECT_FLOAT_EQ(-3.0f, m(0, 3));
    EXPECT_FLOAT_EQ(-5.0f, m(2, 3));
    EXPECT_NE(view.get(), camera.getView(1.5f).get());
    scene.getRoot()->detachChilds();
    place.detachChild();
}

TEST_F(CameraTest, DeletedOverlayIsForgotten) {
    Camera camera;
    Overlay& overlay = scenes().createOverlay();
    camera.setOverlay(overlay);
    EXPECT_TRUE(scenes().deleteOverlay(overlay));
    EXPECT_EQ(nullptr, camera.getOverlay());
    EXPECT_FALSE(camera.useOverlay());
    EXPECT_TRUE(camera.getOverlayView(1.0f).isNull());
}

TEST_F(CameraTest, CameraMayEndBeforeItsOverlay) {
    Overlay& overlay = scenes().createOverlay();
    {
        Camera camera;
        camera.setOverlay(overlay);
    }
    EXPECT_TRUE(scenes().deleteOverlay(overlay));
}

}  // namespace
