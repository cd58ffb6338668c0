#include "support/GLDrawFixture.h"

#include <cstdio>

#include "core/NameMapper.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "texture/TextureSource.h"

namespace RenderGLTest {

using Velun::Color;

class GLScreenshotTest : public GLDrawTest {
protected:
    void TearDown() override {
        std::remove(mPath.c_str());
        GLDrawTest::TearDown();
    }
    std::string mPath = std::string(VELUN_BINARY_DIR) + "/render_gl_screenshot_test.png";
};

TEST_F(GLScreenshotTest, SavesWhatTheWindowShowsAsPngWithTheTopRowFirst) {
    addViewport(addCamera());
    // Red above the middle, blue below it.
    QuadSpec top;
    top.x0 = -5;
    top.x1 = 5;
    top.y0 = 0;
    top.y1 = 5;
    addQuad(root(), 0, 0, -5, top, colorMaterial(Color(1, 0, 0)));
    QuadSpec bottom = top;
    bottom.y0 = -5;
    bottom.y1 = 0;
    addQuad(root(), 0, 0, -5, bottom, colorMaterial(Color(0, 0, 1)));
    mScene->getUpdateTraverser()->run(mTime);
    sWindow->render(mTime);

    ASSERT_TRUE(sWindow->saveScreenshot(mPath));
    Velun::DevILTextureSourceLoader loader;
    ASSERT_TRUE(loader.initialize());
    SharedPtr<Velun::TextureSource> image =
        loader.load(Velun::NameMapper::ResourceInfo("shot", mPath, "png"));
    ASSERT_FALSE(image.isNull());
    Velun::TextureInfo const& info = image->getTextureInfo();
    EXPECT_EQ(info.getWidth(), unsigned(Width));
    EXPECT_EQ(info.getHeight(), unsigned(Height));
    Color topLeft = info.getPixelColor(image->getPixel(0, 0, 0));
    Color bottomRight = info.getPixelColor(image->getPixel(Width - 1, Height - 1, 0));
    EXPECT_FLOAT_EQ(topLeft.r, 1.0f);
    EXPECT_FLOAT_EQ(topLeft.b, 0.0f);
    EXPECT_FLOAT_EQ(bottomRight.r, 0.0f);
    EXPECT_FLOAT_EQ(bottomRight.b, 1.0f);
    loader.shutdown();
}

TEST_F(GLScreenshotTest, UnwritablePathFailsWithAnErrorLine) {
    addViewport(addCamera());
    std::string const path = "/nonexistent-directory/shot.png";
    testing::internal::CaptureStderr();
    EXPECT_FALSE(sWindow->saveScreenshot(path));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Could not save the image /nonexistent-directory/shot.png: could not open file\n");
}

}  // namespace RenderGLTest
