#include "render/Viewport.h"

#include <gtest/gtest.h>

#include "TestRenderEngine.h"
#include "core/VelunCore.h"
#include "render/RenderTarget.h"

using Dorvan::SharedPtr;
using namespace Velun;

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
