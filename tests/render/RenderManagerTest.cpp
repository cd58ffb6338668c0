#include "render/RenderManager.h"

#include <gtest/gtest.h>

#include "support/Engine.h"

#include "TestRenderEngine.h"
#include "core/VelunCore.h"

using namespace Velun;
using RenderTest::CallLog;
using RenderTest::TestRenderEngine;

namespace {

class RenderManagerTest : public VelunTest::EngineTest {
protected:
    void SetUp() override {
        VelunTest::EngineTest::SetUp();
        mFirst = new TestRenderEngine(&mLog, "first");
        mSecond = new TestRenderEngine(&mLog, "second");
    }
    void TearDown() override {
        VelunTest::EngineTest::TearDown();
        delete mFirst;
        delete mSecond;
    }
    RenderManager& manager() { return VelunCore::getSingleton().getRenderManager(); }

    CallLog mLog;
    TestRenderEngine* mFirst;
    TestRenderEngine* mSecond;
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
    EXPECT_EQ(1, late.mInitializeCount);
    manager().unregisterRenderer(&late);
}

TEST_F(RenderManagerTest, WindowsGetIdsFromACounterAndOneAdapterEach) {
    manager().registerRenderer("test", mFirst);
    RenderWindow* a = manager().createRenderWindow("a", 10, 10, false, 0, 0, nullptr);
    RenderWindow* b = manager().createRenderWindow("b", 10, 10, false, 0, 0, nullptr);
    EXPECT_EQ(0, a->getId());
    EXPECT_EQ(1, b->getId());
    EXPECT_EQ(a, manager().getPrimaryRenderWindow());
    EXPECT_EQ(b, manager().getRenderWindow(1));
    EXPECT_EQ(b, manager().getRenderWindowByName("b"));
    EXPECT_EQ(nullptr, manager().getRenderWindowByName("c"));
    ASSERT_EQ(2u, manager().getProcessList()->size());
    EXPECT_EQ(b,
              static_cast<RenderManager::RenderAdapter*>(manager().getProcessList()->at(1))->getRenderer());

    // A destroyed window's id is never handed out again.
    EXPECT_TRUE(manager().destroyRenderWindow(0));
    EXPECT_EQ(nullptr, manager().getPrimaryRenderWindow());
    RenderWindow* c = manager().createRenderWindow("c", 10, 10, false, 0, 0, nullptr);
    EXPECT_EQ(2, c->getId());
    EXPECT_EQ(b, manager().getRenderWindow(1));
    EXPECT_EQ(2u, manager().getRenderWindowCount());
    ASSERT_EQ(2u, manager().getProcessList()->size());
    EXPECT_EQ(b,
              static_cast<RenderManager::RenderAdapter*>(manager().getProcessList()->at(0))->getRenderer());
    EXPECT_EQ(c,
              static_cast<RenderManager::RenderAdapter*>(manager().getProcessList()->at(1))->getRenderer());

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
    EXPECT_EQ(1, mFirst->mShutdownCount);
    VelunCore::getSingleton().startup();
}

TEST_F(RenderManagerTest, UnregisteredEngineLeavesWithItsWindows) {
    manager().registerRenderer("one", mFirst);
    manager().registerRenderer("two", mSecond);
    manager().createRenderWindow("a", 10, 10, false, 0, 0, nullptr);
    EXPECT_TRUE(manager().unregisterRenderer(mFirst));
    EXPECT_FALSE(manager().unregisterRenderer(mFirst));
    EXPECT_EQ(0u, manager().getRenderWindowCount());
    EXPECT_EQ(0u, manager().getProcessList()->size());
    EXPECT_EQ(0, mFirst->mShutdownCount);
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
