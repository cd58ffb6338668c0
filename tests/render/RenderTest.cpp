#include <gtest/gtest.h>

#include "TestRenderEngine.h"
#include "core/VelunCore.h"
#include "render/RenderManager.h"
#include "render/RenderTarget.h"
#include "render/Viewport.h"
#include "render/ViewportRenderer.h"
#include "scene/Branch.h"
#include "scene/Overlay.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "support/Engine.h"

using namespace Velun;
using Dorvan::SharedPtr;
using RenderTest::CallLog;
using RenderTest::TestRenderEngine;

namespace {

// Two engines that outlive the engine's shutdown in TearDown.
class RenderManagerTest : public VelunTest::EngineTest {
protected:
    RenderManager& manager() { return VelunCore::getSingleton().getRenderManager(); }

    CallLog mLog;
    TestRenderEngine mFirstEngine{&mLog, "first"}, mSecondEngine{&mLog, "second"};
    TestRenderEngine* mFirst = &mFirstEngine;
    TestRenderEngine* mSecond = &mSecondEngine;
};

TEST_F(RenderManagerTest, InitializeRunsEveryEngineInNameOrderAndLateOnesAtOnce) {
    manager().registerRenderer("zeta", mFirst);
    manager().registerRenderer("alpha", mSecond);
    EXPECT_TRUE(mLog.empty());
    EXPECT_EQ(1, manager().initializeRenderer(false));
    EXPECT_TRUE(manager().isInitialized());
    EXPECT_EQ((CallLog{"initialize second", "initialize first"}), mLog);

    TestRenderEngine late(&mLog, "late");
    manager().registerRenderer("late", &late);
    EXPECT_EQ("initialize late", mLog.back());
    manager().unregisterRenderer(&late);
}

TEST_F(RenderManagerTest, WindowsGetIdsFromACounterAndOneAdapterEach) {
    manager().registerRenderer("test", mFirst);
    auto create = [this](const char* name) {
        return manager().createRenderWindow(name, 10, 10, false, 0, 0, nullptr);
    };
    // The windows the main loop draws, in order.
    auto drawn = [this] {
        std::vector<TargetRenderer*> windows;
        for (Process* process : *manager().getProcessList())
            windows.push_back(static_cast<RenderManager::RenderAdapter*>(process)->getRenderer());
        return windows;
    };
    RenderWindow* a = create("a");
    RenderWindow* b = create("b");
    EXPECT_EQ(0, a->getId());
    EXPECT_EQ(1, b->getId());
    EXPECT_EQ(a, manager().getPrimaryRenderWindow());
    EXPECT_EQ(b, manager().getRenderWindowByName("b"));
    EXPECT_EQ(nullptr, manager().getRenderWindowByName("c"));
    EXPECT_EQ((std::vector<TargetRenderer*>{a, b}), drawn());

    // A destroyed window's id is never handed out again.
    EXPECT_TRUE(manager().destroyRenderWindow(0));
    EXPECT_EQ(nullptr, manager().getPrimaryRenderWindow());
    RenderWindow* c = create("c");
    EXPECT_EQ(2, c->getId());
    EXPECT_EQ(b, manager().getRenderWindow(1));
    EXPECT_EQ(2u, manager().getRenderWindowCount());
    EXPECT_EQ((std::vector<TargetRenderer*>{b, c}), drawn());

    EXPECT_EQ(2, manager().setPrimaryRenderWindow(2));
    EXPECT_EQ(c, manager().getPrimaryRenderWindow());
    EXPECT_EQ(2, manager().setPrimaryRenderWindow(7));
}

TEST_F(RenderManagerTest, ShutdownDeletesWindowsThenShutsEachEngineDownOnce) {
    manager().registerRenderer("one", mFirst);
    manager().registerRenderer("alias", mFirst);
    manager().registerRenderer("two", mSecond);
    manager().createRenderWindow("a", 10, 10, false, 0, 0, nullptr);
    mLog.clear();
    VelunCore::getSingleton().shutdown();
    EXPECT_EQ((CallLog{"destroy window a", "shutdown first", "shutdown second"}), mLog);
    VelunCore::getSingleton().startup();
}

TEST_F(RenderManagerTest, UnregisteredEngineLeavesWithItsWindows) {
    manager().registerRenderer("one", mFirst);
    manager().registerRenderer("two", mSecond);
    manager().createRenderWindow("a", 10, 10, false, 0, 0, nullptr);
    mLog.clear();
    EXPECT_TRUE(manager().unregisterRenderer(mFirst));
    EXPECT_FALSE(manager().unregisterRenderer(mFirst));
    EXPECT_EQ((CallLog{"destroy window a"}), mLog);  // and no shutdown
    EXPECT_EQ(0u, manager().getRenderWindowCount());
    EXPECT_EQ(0u, manager().getProcessList()->size());
    // The default moves on to the remaining engine.
    EXPECT_EQ(mSecond, manager().createRenderWindow("b", 10, 10, false, 0, 0, nullptr)->getRenderEngine());
}

TEST_F(RenderManagerTest, BadArgumentsAreReportedAndRefused) {
    testing::internal::CaptureStderr();
    manager().registerRenderer("none", nullptr);
    EXPECT_EQ("RenderManager::registerRenderer: no engine given for 'none'\n",
              testing::internal::GetCapturedStderr());
    EXPECT_EQ(0u, manager().getRendererNames()->size());

    manager().registerRenderer("test", mFirst);
    testing::internal::CaptureStderr();
    EXPECT_EQ(nullptr, manager().createRenderWindow("flat", 640, 0, false, 0, 0, nullptr));
    EXPECT_EQ("RenderManager::createRenderWindow: window 'flat' needs a positive size, not 640x0\n",
              testing::internal::GetCapturedStderr());
    EXPECT_EQ(0u, manager().getRenderWindowCount());
}

}  // namespace

namespace {

TEST(ViewportLayoutTest, RelativeLayoutFollowsTheSurfaceOfEachCall) {
    Viewport right(0.5f, 0.0f, 0.5f, 1.0f);
    EXPECT_TRUE(right.isRelative());
    EXPECT_TRUE(right.isEnabled());
    EXPECT_EQ(400, right.getPosX(801));
    EXPECT_EQ(400, right.getWidth(801));
    EXPECT_EQ(0, right.getPosY(600));
    EXPECT_EQ(600, right.getHeight(600));
    EXPECT_EQ(160, right.getWidth(320));
    EXPECT_FLOAT_EQ(400.0f / 600.0f, right.getAspect(801, 600));
}

TEST(RenderTargetTest, ViewportsKeepTheirDrawingOrder) {
    RenderTarget target;
    SharedPtr<Viewport> a(new Viewport(0, 0, 1, 1));
    SharedPtr<Viewport> b(new Viewport(0, 0, 2, 2));
    SharedPtr<Viewport> c(new Viewport(0, 0, 3, 3));
    EXPECT_EQ(0, target.attachViewport(a));
    EXPECT_EQ(1, target.attachViewport(b));
    EXPECT_EQ(0, target.insertViewport(0, c));
    EXPECT_EQ(3, target.getViewportCount());
    EXPECT_EQ(c, target.getViewport(0));
    EXPECT_EQ(a, target.getViewport(1));
    EXPECT_EQ(b, target.getViewport(2));
    EXPECT_EQ(3, target.insertViewport(9, c));
    EXPECT_EQ(c, target.detachViewport(3));

    EXPECT_EQ(a, target.detachViewport(1));
    EXPECT_EQ(2, target.getViewportCount());
    EXPECT_EQ(b, target.getViewport(1));
}

TEST(RenderTargetTest, DetachingOutsideTheListReportsIt) {
    RenderTarget target;
    testing::internal::CaptureStderr();
    EXPECT_TRUE(target.detachViewport(0).isNull());
    EXPECT_EQ("RenderTarget::detachViewport: no viewport at position 0 of 0\n",
              testing::internal::GetCapturedStderr());
}

}  // namespace

namespace {

// Disabled, empty and cameraless viewports are skipped; a camera outside any scene sets its
// viewport but draws nothing.
TEST(ViewportRendererTest, SkipsViewportsWithNothingToDraw) {
    VelunCore::getSingleton().startup();
    {
        CallLog log;
        RenderTest::TestRenderEngine engine(&log);
        RenderTest::TestRenderWindow window(&engine, &log, 0, "w", 400, 300, false, 0, 0);
        SharedPtr<RenderTarget> target(new RenderTarget());
        window.attachRenderTarget(target);
        SceneGraph& scene = VelunCore::getSingleton().getSceneManager().createSceneGraph();
        SharedPtr<Camera> eye(new Camera("eye")), loose(new Camera("loose"));
        scene.getRoot()->attachChild(*eye);
        const struct {
            int x, y, width, height;
            SharedPtr<Camera> camera;
            bool enabled;
        } viewports[] = {{0, 0, 400, 300, eye, false},
                         {0, 0, 0, 300, eye, true},
                         {0, 0, 400, 300, SharedPtr<Camera>(), true},
                         {1, 2, 30, 40, loose, true}};
        for (const auto& v : viewports) {
            SharedPtr<Viewport> viewport(new Viewport(v.x, v.y, v.width, v.height));
            viewport->attachCamera(v.camera);
            viewport->setEnabled(v.enabled);
            target->attachViewport(viewport);
        }
        window.render(0);
        EXPECT_EQ((CallLog{"render w at 0", "clear surface", "viewport 1 2 30 40", "swap"}), log);
        scene.getRoot()->detachChilds();
    }
    VelunCore::getSingleton().shutdown();
}

}  // namespace
