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

TEST(CameraSettingsTest, FrustrumKeepsTheTangentRatioOfTheAspect) {
    CameraSettings settings(CameraSettings::Perspective);
    settings.setNearDistance(1.0);
    settings.setFarDistance(50.0);
    SharedPtr<Frustrum> frustrum = settings.getFrustrum(Dorvan::Matrix<float, 4>::identity(), 2.0f);
    EXPECT_FLOAT_EQ(2.0f, frustrum->getAspect());
    EXPECT_FLOAT_EQ(90.0f, frustrum->getFovY());
    EXPECT_NEAR(2.0 * std::atan(2.0) * 180.0 / 3.14159265358979, frustrum->getFovX(), 1e-3);
    EXPECT_NEAR(2.0f, frustrum->getRight(), 1e-5f);
    EXPECT_NEAR(1.0f, frustrum->getTop(), 1e-5f);
    EXPECT_DOUBLE_EQ(50.0, frustrum->getFarDistance());

    settings.setAspectMode(CameraSettings::AspectFovYFromX);
    frustrum = settings.getFrustrum(Dorvan::Matrix<float, 4>::identity(), 2.0f);
    EXPECT_FLOAT_EQ(90.0f, frustrum->getFovX());
    EXPECT_NEAR(0.5f, frustrum->getTop(), 1e-5f);
}

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

TEST_F(CameraTest, OverlayViewComesFromAFixedOrthographicCamera) {
    SceneGraph& scene = scenes().createSceneGraph();
    TransformationNode place;
    Camera camera;
    place.translate(10.0f, 20.0f, 30.0f, false);
    place.setChild(camera);
    scene.getRoot()->attachChild(place);
    scene.getUpdateTraverser()->run(0);
    Overlay& overlay = scenes().createOverlay();
    camera.setOverlay(overlay);
    camera.setOverlayZOffset(3.0f);

    SharedPtr<View> view = camera.getOverlayView(1.25f);
    ASSERT_FALSE(view.isNull());
    EXPECT_EQ(&overlay, &view->getSceneRoot());
    EXPECT_EQ(nullptr, view->getViewFilter());
    EXPECT_EQ(CameraSettings::Orthographic, view->getFrustrum()->getProjectionMode());
    Dorvan::Matrix<float, 4> const& m = view->getFrustrum()->getViewMatrix();
    EXPECT_FLOAT_EQ(0.0f, m(0, 3));
    EXPECT_FLOAT_EQ(0.0f, m(1, 3));
    EXPECT_FLOAT_EQ(-3.0f, m(2, 3));
    EXPECT_FLOAT_EQ(1.0f, m(0, 0));
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
