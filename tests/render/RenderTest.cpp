#include <gtest/gtest.h>

#include "TestRenderEngine.h"
#include "render/RenderManager.h"
#include "render/RenderTarget.h"
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
    RenderWindow* create(const char* name) {
        return manager().createRenderWindow(name, 10, 10, false, 0, 0, nullptr);
    }

    CallLog mLog;
    TestRenderEngine mFirstEngine{&mLog, "first"}, mSecondEngine{&mLog, "second"};
    TestRenderEngine *mFirst = &mFirstEngine, *mSecond = &mSecondEngine;
};

// Bad arguments are reported and refused.
TEST_F(RenderManagerTest, InitializeRunsEveryEngineInNameOrderAndLateOnesAtOnce) {
    testing::internal::CaptureStderr();
    manager().registerRenderer("none", nullptr);
    EXPECT_EQ("RenderManager::registerRenderer: no engine given for 'none'\n",
              testing::internal::GetCapturedStderr());
    EXPECT_EQ(0u, manager().getRendererNames()->size());
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

    testing::internal::CaptureStderr();
    EXPECT_EQ(nullptr, manager().createRenderWindow("flat", 640, 0, false, 0, 0, nullptr));
    EXPECT_EQ("RenderManager::createRenderWindow: window 'flat' needs a positive size, not 640x0\n",
              testing::internal::GetCapturedStderr());
    EXPECT_EQ(0u, manager().getRenderWindowCount());
}

TEST_F(RenderManagerTest, WindowsGetIdsFromACounterAndOneAdapterEach) {
    manager().registerRenderer("test", mFirst);
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

// Shutdown deletes the windows, then shuts each remaining engine down once, under any names.
TEST_F(RenderManagerTest, UnregisteredEngineLeavesWithItsWindowsAndShutdownEndsTheRest) {
    manager().registerRenderer("one", mFirst);
    manager().registerRenderer("two", mSecond);
    manager().registerRenderer("zeta", mSecond);
    create("a");
    mLog.clear();
    EXPECT_TRUE(manager().unregisterRenderer(mFirst));
    EXPECT_FALSE(manager().unregisterRenderer(mFirst));
    EXPECT_EQ((CallLog{"destroy window a"}), mLog);  // and no shutdown
    EXPECT_EQ(0u, manager().getRenderWindowCount());
    EXPECT_EQ(0u, manager().getProcessList()->size());
    // The default moves on to the remaining engine.
    EXPECT_EQ(mSecond, create("b")->getRenderEngine());
    VelunCore::getSingleton().shutdown();
    EXPECT_EQ((CallLog{"destroy window a", "destroy window b", "shutdown second"}), mLog);
    VelunCore::getSingleton().startup();
}

// The frame test shows the drawing order after an insert at the front.
TEST(RenderTargetTest, InsertPastTheEndAppendsAndDetachingClosesTheGap) {
    RenderTarget target;
    SharedPtr<Viewport> a(new Viewport(0, 0, 1, 1)), b(new Viewport(0, 0, 2, 2));
    EXPECT_EQ(0, target.attachViewport(a));
    EXPECT_EQ(1, target.insertViewport(9, b));
    EXPECT_EQ(a, target.detachViewport(0));
    EXPECT_EQ(b, target.getViewport(0));
    testing::internal::CaptureStderr();
    EXPECT_TRUE(target.detachViewport(1).isNull());
    EXPECT_EQ("RenderTarget::detachViewport: no viewport at position 1 of 1\n",
              testing::internal::GetCapturedStderr());
    EXPECT_EQ(b, target.detachViewport(0));
    EXPECT_EQ(0, target.getViewportCount());
}

}  // namespace
