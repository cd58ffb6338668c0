#include "support/GLDrawFixture.h"

#include "plugins/render/opengl/GLViewRenderer.h"
#include "scene/View.h"

namespace RenderGLTest {

using Velun::Color;

class GLViewRendererTest : public GLDrawTest {};

TEST_F(GLViewRendererTest, UnlitQuadInFrontIsDrawnAndCulledWhenOutside) {
    SharedPtr<Velun::Camera> camera = addCamera();
    addViewport(camera);
    Velun::TransformationNode& place = addQuad(root(), 0, 0, -5, QuadSpec(), colorMaterial(Color(1, 0, 0)));

    frame();
    savePicture("red_quad");
    // The quad spans 2 of the 10 units the view is wide at distance 5.
    EXPECT_TRUE(near(centre(), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(0, 0), Rgb{0, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width - 1, Height - 1), Rgb{0, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width / 2 - 5, Height / 2 + 5), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width / 2 - 8, Height / 2), Rgb{0, 0, 0}, 0));

    // Behind the camera: culled before any GL call, so not even a draw call is made.
    place.translate(0, 0, 10, false);
    mScene->getUpdateTraverser()->run(mTime + 1);
    Velun::GLViewRenderer pass(sWindow->getGLRenderContext(), camera->getView(1.0f),
                               SharedPtr<Velun::RenderSettings>(), camera->getView(1.0f)->getFrustrum());
    pass.traverse();
    EXPECT_TRUE(pass.getObjectRenderer().getOpaqueList().empty());
    pass.setProjection();
    pass.setModelview();
    pass.render();
    pass.popModelview();
    EXPECT_EQ(pass.getObjectRenderer().getGeometryRenderer().getDrawCallCount(), 0u);

    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 0, 0}, 0));
}

TEST_F(GLViewRendererTest, OverlayCoversTheSceneEvenWhereSceneGeometryIsNearer) {
    SharedPtr<Velun::Camera> camera = addCamera();
    addViewport(camera);
    // Scene: a green quad just past the near plane, filling the whole view.
    QuadSpec wall;
    wall.x0 = wall.y0 = -1;
    wall.x1 = wall.y1 = 1;
    addQuad(root(), 0, 0, -0.2f, wall, colorMaterial(Color(0, 1, 0)));

    // Overlay: the unit square is the viewport; a red HUD quad over its middle, at the
    // overlay's origin, which is 2 units from its fixed eye and so far behind the wall.
    Velun::Overlay& overlay = addOverlay();
    camera->setOverlay(overlay);
    SharedPtr<Velun::RenderSettings> unlit(new Velun::RenderSettings());
    unlit->setUseLights(false);
    camera->getOverlaySettings().setRenderSettings(unlit);
    QuadSpec hud;
    hud.x0 = hud.y0 = 0.25f;
    hud.x1 = hud.y1 = 0.75f;
    addQuad(*overlay.getRoot(), 0, 0, 0, hud, colorMaterial(Color(1, 0, 0)));

    frame();
    savePicture("overlay");
    EXPECT_TRUE(near(centre(), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width / 4 + 1, Height / 4 + 1), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(2, 2), Rgb{0, 255, 0}, 0));
    EXPECT_TRUE(near(pixel(Width - 3, Height / 2), Rgb{0, 255, 0}, 0));

    camera->setUseOverlay(false);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 255, 0}, 0));
}

// The number of pixels of `colour` in row y between x0 and x1, and in column x between
// y0 and y1.
namespace {
int runLength(std::vector<unsigned char> const& px, int width, int x0, int x1, int y, Rgb colour) {
    int n = 0;
    for (int x = x0; x < x1; ++x) {
        std::size_t i = (std::size_t(y) * width + x) * 3;
        n += px[i] == colour.r && px[i + 1] == colour.g && px[i + 2] == colour.b;
    }
    return n;
}
int columnLength(std::vector<unsigned char> const& px, int width, int x, int y0, int y1, Rgb colour) {
    int n = 0;
    for (int y = y0; y < y1; ++y) {
        std::size_t i = (std::size_t(y) * width + x) * 3;
        n += px[i] == colour.r && px[i + 1] == colour.g && px[i + 2] == colour.b;
    }
    return n;
}
}  // namespace

TEST_F(GLViewRendererTest, TwoViewportsShowTheirCamerasSideBySideEachWithItsOwnAspect) {
    // A narrow viewport on the left (16 x 64, aspect 1/4) and a wide one on the right
    // (48 x 64, aspect 3/4), each with its own camera and scene.
    SharedPtr<Velun::Camera> left = addCamera();
    addQuad(root(), 0, 0, -4, QuadSpec(), colorMaterial(Color(1, 0, 0)));
    addViewport(left, 0.0f, 0.0f, 0.25f, 1.0f);

    Velun::SceneGraph& other = Velun::VelunCore::getSingleton().getSceneManager().createSceneGraph();
    Velun::Camera* rightCamera = new Velun::Camera();
    SharedPtr<Velun::Camera> right(rightCamera);
    right->getCamSettings().setFovY(90.0f);
    SharedPtr<Velun::RenderSettings> unlit(new Velun::RenderSettings());
    unlit->setUseLights(false);
    right->getCamSettings().setRenderSettings(unlit);
    other.getRoot()->attachChild(*rightCamera);
    Velun::TransformationNode& greenQuad =
        addQuad(*other.getRoot(), 0, 0, -4, QuadSpec(), colorMaterial(Color(0, 1, 0)));
    addViewport(right, 0.25f, 0.0f, 0.75f, 1.0f);
    other.getUpdateTraverser()->run(mTime);

    frame();
    savePicture("viewports");
    Rgb const red{255, 0, 0}, green{0, 255, 0};
    // Both cameras see a 2 x 2 quad at distance 4 under a vertical field of 90 degrees:
    // 16 of the 64 rows. A square stays square in either viewport.
    int redRows = columnLength(mPixels, Width, 8, 0, Height, red);
    int greenRows = columnLength(mPixels, Width, 40, 0, Height, green);
    EXPECT_NEAR(redRows, 16, 1);
    EXPECT_NEAR(greenRows, 16, 1);
    EXPECT_NEAR(runLength(mPixels, Width, 0, 16, Height / 2, red), redRows, 1);
    EXPECT_NEAR(runLength(mPixels, Width, 16, Width, Height / 2, green), greenRows, 1);
    // Neither picture spills into the other's viewport.
    EXPECT_EQ(runLength(mPixels, Width, 16, Width, Height / 2, red), 0);
    EXPECT_EQ(runLength(mPixels, Width, 0, 16, Height / 2, green), 0);
    EXPECT_TRUE(near(pixel(8, Height / 2), red, 0));
    EXPECT_TRUE(near(pixel(40, Height / 2), green, 0));

    mTarget = SharedPtr<Velun::RenderTarget>();
    sWindow->detachRenderTarget();
    right = SharedPtr<Velun::Camera>();
    (void)greenQuad;
    mNodes.clear();
    Velun::VelunCore::getSingleton().getSceneManager().deleteSceneGraph(other);
}

}  // namespace RenderGLTest
