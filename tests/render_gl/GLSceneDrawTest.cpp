#include <cstdio>

#include "core/NameMapper.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "support/GLDrawFixture.h"
#include "texture/TextureSource.h"

using Velun::Color;

namespace RenderGLTest {

using GLViewRendererTest = GLDrawTest;

TEST_F(GLViewRendererTest, OverlayCoversTheSceneEvenWhereSceneGeometryIsNearer) {
    SharedPtr<Velun::Camera> camera = addCamera();
    addViewport(camera);
    // Scene: a green quad just past the near plane, filling the whole view.
    addQuad(root(), 0, 0, -0.2f, QuadShape(), colorMaterial(Color(0, 1, 0)));

    // Overlay: the unit square is the viewport; a red HUD quad over its middle, at the
    // overlay's origin, which is 2 units from its fixed eye and so far behind the wall.
    Velun::Overlay& overlay = addOverlay();
    camera->setOverlay(overlay);
    SharedPtr<Velun::RenderSettings> unlit(new Velun::RenderSettings());
    unlit->setUseLights(false);
    camera->getOverlaySettings().setRenderSettings(unlit);
    addQuad(*overlay.getRoot(), 0, 0, 0, QuadShape{0.25f, 0.25f, 0.75f, 0.75f},
            colorMaterial(Color(1, 0, 0)));

    frame();
    expectPixels({{32, 32, {255, 0, 0}}, {17, 17, {255, 0, 0}}, {2, 2, {0, 255, 0}}, {61, 32, {0, 255, 0}}},
                 0);

    camera->setUseOverlay(false);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 255, 0}, 0));
}

// A narrow viewport on the left (16 x 64, aspect 1/4) and a wide one on the right
// (48 x 64, aspect 3/4), each with its own camera and scene. Both cameras see a 2 x 2 quad
// at distance 4 under a vertical field of 90 degrees: rows 24 to 39, the left viewport's
// whole width, the right one's columns 32 to 47.
TEST_F(GLViewRendererTest, TwoViewportsShowTheirCamerasSideBySideEachWithItsOwnAspect) {
    addQuad(root(), 0, 0, -4, QuadShape(), colorMaterial(Color(1, 0, 0)));
    addViewport(addCamera(), 0.0f, 0.0f, 0.25f, 1.0f);
    Velun::SceneGraph& other = addScene();
    addQuad(*other.getRoot(), 0, 0, -4, QuadShape(), colorMaterial(Color(0, 1, 0)));
    addViewport(addCamera(false, other.getRoot()), 0.25f, 0.0f, 0.75f, 1.0f);
    frame();
    Rgb const red{255, 0, 0}, green{0, 255, 0}, black{0, 0, 0};
    expectPixels({{1, 25, red},
                  {14, 38, red},
                  {8, 22, black},
                  {8, 41, black},
                  {16, 32, black},
                  {33, 25, green},
                  {46, 38, green},
                  {31, 32, black},
                  {48, 32, black},
                  {40, 22, black},
                  {40, 41, black}},
                 0);
}

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
    addQuad(root(), 0, 0, -5, QuadShape{-5, 0, 5, 5}, colorMaterial(Color(1, 0, 0)));
    addQuad(root(), 0, 0, -5, QuadShape{-5, -5, 5, 0}, colorMaterial(Color(0, 0, 1)));
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
    EXPECT_EQ(info.getPixelColor(image->getPixel(0, 0, 0)).r, 1.0f);                   // top left: red
    EXPECT_EQ(info.getPixelColor(image->getPixel(Width - 1, Height - 1, 0)).b, 1.0f);  // bottom right: blue
    loader.shutdown();
}

TEST_F(GLScreenshotTest, UnwritablePathFailsWithAnErrorLine) {
    addViewport(addCamera());
    EXPECT_FALSE(sWindow->saveScreenshot("/nonexistent-directory/shot.png"));
    EXPECT_EQ(logLines(), std::vector<std::string>{"render.opengl.GLScreenshot: Could not save the image "
                                                   "/nonexistent-directory/shot.png: could not open file"});
}

}  // namespace RenderGLTest
