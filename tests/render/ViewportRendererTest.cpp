#include "render/ViewportRenderer.h"

#include <gtest/gtest.h>

#include "TestRenderEngine.h"
#include "core/VelunCore.h"
#include "scene/Branch.h"
#include "scene/Overlay.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"

using Dorvan::SharedPtr;
using namespace Velun;
using RenderTest::CallLog;

namespace {

// Draws a target on a 400x300 test window and keeps the log of the drawing.
class ViewportRendererTest : public ::testing::Test {
protected:
    void SetUp() override {
        VelunCore::getSingleton().startup();
        mEngine = new RenderTest::TestRenderEngine(&mLog);
        mWindow = new RenderTest::TestRenderWindow(mEngine, &mLog, 0, "w", 400, 300, false, 0, 0);
        mTarget = SharedPtr<RenderTarget>(new RenderTarget());
        mWindow->attachRenderTarget(mTarget);
        mScene = &VelunCore::getSingleton().getSceneManager().createSceneGraph();
        mCamera = SharedPtr<Camera>(new Camera("eye"));
        mScene->getRoot()->attachChild(*mCamera);
    }
    void TearDown() override {
        mScene->getRoot()->detachChilds();
        delete mWindow;
        delete mEngine;
        mCamera.release();
        mTarget.release();
        VelunCore::getSingleton().shutdown();
    }

    SharedPtr<Viewport> addViewport(int x, int y, int w, int h, SharedPtr<Camera> camera) {
        SharedPtr<Viewport> viewport(new Viewport(x, y, w, h));
        viewport->attachCamera(camera);
        mTarget->attachViewport(viewport);
        return viewport;
    }

    CallLog draw() {
        mLog.clear();
        mWindow->render(0);
        return mLog;
    }

    CallLog mLog;
    RenderTest::TestRenderEngine* mEngine;
    RenderTest::TestRenderWindow* mWindow;
    SharedPtr<RenderTarget> mTarget;
    SceneGraph* mScene;
    SharedPtr<Camera> mCamera;
};

TEST_F(ViewportRendererTest, SkipsDisabledEmptyAndCameralessViewports) {
    addViewport(0, 0, 400, 300, mCamera)->setEnabled(false);
    addViewport(0, 0, 0, 300, mCamera);
    addViewport(0, 0, 400, 300, SharedPtr<Camera>());
    EXPECT_EQ((CallLog{"render w at 0", "clear surface", "swap"}), draw());
}

TEST_F(ViewportRendererTest, CameraOutsideAnySceneSetsItsViewportButDrawsNothing) {
    SharedPtr<Camera> loose(new Camera("loose"));
    addViewport(1, 2, 30, 40, loose);
    EXPECT_EQ((CallLog{"render w at 0", "clear surface", "viewport 1 2 30 40", "swap"}), draw());
}

}  // namespace
