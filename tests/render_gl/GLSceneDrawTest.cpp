#include <cstdio>

#include "core/NameMapper.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "support/GLDrawFixture.h"
#include "texture/TextureSource.h"

using Velun::Color;

namespace RenderGLTest {

class GLObjectRendererTest : public GLDrawTest {
protected:
    // Half-transparent by vertex colour; the alpha test would reject alpha 0.5.
    SharedPtr<Velun::Material> blended() {
        SharedPtr<Velun::Material> material(new Velun::Material());
        material->setUseBlending(true);
        material->setUseAlphaTest(false);
        return material;
    }

    static QuadShape tinted(Color const& color, float half = 1) {
        return QuadShape{-half, -half, half, half, 0, false, true, color};
    }
};

// Red over black, then green over that: (0.25, 0.5, 0). The other order would give
// (0.5, 0.25, 0).
TEST_F(GLObjectRendererTest, BlendedQuadsAreDrawnFarThenNearWhenTheNearOneComesFirst) {
    addViewport(addCamera());
    addQuad(root(), 0, 0, -5, tinted(Color(0, 1, 0, 0.5f)), blended());
    addQuad(root(), 0, 0, -10, tinted(Color(1, 0, 0, 0.5f), 4), blended());
    frame();
    EXPECT_TRUE(near(centre(), Rgb{64, 128, 0}, 2));
    EXPECT_TRUE(near(pixel(Width / 2, 21), Rgb{128, 0, 0}, 2));  // the far quad alone
}

TEST_F(GLObjectRendererTest, EqualDistancesKeepTraversalOrderAndEntriesSortFarToNear) {
    SharedPtr<Velun::Camera> camera = addCamera();
    addQuad(root(), 0, 0, -5, tinted(Color(1, 0, 0, 0.5f)), blended());
    addQuad(root(), 0, 0, -9, tinted(Color(0, 1, 0, 0.5f)), blended());
    addQuad(root(), 0, 0, -5, tinted(Color(0, 0, 1, 0.5f)), blended());
    addQuad(root(), 0, 0, -7, QuadShape(), colorMaterial(Color(1, 1, 1)));
    mScene->getUpdateTraverser()->run(mTime);
    SharedPtr<Velun::View> view = camera->getView(1.0f);
    Velun::GLViewRenderer pass(sWindow->getGLRenderContext(), view, view->getRenderSettings(),
                               view->getFrustrum());
    pass.run();
    Velun::GLObjectRenderer& objects = pass.getObjectRenderer();
    ASSERT_EQ(objects.getOpaqueList().size(), 1u);
    auto const& blendedList = objects.getBlendedList();
    ASSERT_EQ(blendedList.size(), 3u);
    EXPECT_GT(blendedList[0].distance, blendedList[1].distance);
    EXPECT_EQ(blendedList[1].distance, blendedList[2].distance);
    // Of the two at distance 5, the red one (first in the tree) comes first.
    auto colourOf = [](Velun::Drawable* drawable) {
        Velun::VertexDataSet* set = drawable->getGeometry(0)->getIndexedDataSet(0);
        return static_cast<float const*>(set->getColor())[0];
    };
    EXPECT_EQ(colourOf(blendedList[1].drawable), 1.0f);
    EXPECT_EQ(colourOf(blendedList[2].drawable), 0.0f);
    EXPECT_EQ(objects.getGeometryRenderer().getDrawCallCount(), 4u);
}

TEST_F(GLObjectRendererTest, DrawableWithoutMaterialIsDrawnWithTheDefaultNotWithLeftoverState) {
    addViewport(addCamera());
    // A blended, tinted quad first, then one with no material at all: it must come out
    // in the default material's white, opaque and untextured.
    addQuad(root(), -2, 0, -5, tinted(Color(1, 0, 0, 0.5f)), blended());
    addQuad(root(), 2, 0, -5, QuadShape(), SharedPtr<Velun::Material>());
    frame();
    EXPECT_TRUE(near(pixel(Width / 2 + 13, Height / 2), Rgb{255, 255, 255}, 0));
    EXPECT_TRUE(near(pixel(Width / 2 - 13, Height / 2), Rgb{128, 0, 0}, 2));
}

// An index list whose component type GL refuses, to make a draw fail.
class FloatIndices : public Velun::IndexElement, public Velun::IndexDataSet {
public:
    FloatIndices() : mId(createDataSetId()) {}
    ElementType getElementType() const override { return Triangles; }
    Velun::IndexDataSet& getIndexList() override { return *this; }
    const void* getIndexList() const override { return mIndices; }
    unsigned int getCount() const override { return 3; }
    Velun::DataType::Type getIndexType() const override { return Velun::DataType::Float; }
    std::uint64_t getId() const override { return mId; }
    bool isBufferable() const override { return false; }
    bool hasChanged(std::int64_t) const override { return false; }

private:
    std::uint64_t mId;
    float mIndices[3] = {0, 1, 2};
};

TEST_F(GLObjectRendererTest, GLErrorOfADrawableIsLoggedOnceAndDrawingGoesOn) {
    addViewport(addCamera());
    // A quad whose group draws the broken list after its own, then a yellow quad.
    SharedPtr<Velun::Geometry> geometry = makeQuad(QuadShape());
    Velun::GeometryDataGroup& group = *static_cast<Velun::GeometryData&>(*geometry).getGroup(0);
    FloatIndices broken;
    group.getElementList(0).add(&broken);
    addObject(root(), -2, 0, -5, geometry, SharedPtr<Velun::Material>());
    addQuad(root(), 2, 0, -5, QuadShape(), colorMaterial(Color(1, 1, 0)));

    frame();
    EXPECT_EQ(logLines(),
              std::vector<std::string>{"render.opengl.GLObjectRenderer: GL Error: invalid enumerant"});
    EXPECT_TRUE(near(pixel(Width / 2 - 13, Height / 2), Rgb{255, 255, 255}, 0));
    EXPECT_TRUE(near(pixel(Width / 2 + 13, Height / 2), Rgb{255, 255, 0}, 0));
    group.getElementList(0).remove(&broken);  // it lives on this test's stack
}

class GLViewRendererTest : public GLDrawTest {};

TEST_F(GLViewRendererTest, UnlitQuadInFrontIsDrawnAndCulledWhenOutside) {
    SharedPtr<Velun::Camera> camera = addCamera();
    addViewport(camera);
    Velun::TransformationNode& place = addQuad(root(), 0, 0, -5, QuadShape(), colorMaterial(Color(1, 0, 0)));

    frame();
    // The quad spans 2 of the 10 units the view is wide at distance 5.
    EXPECT_TRUE(near(centre(), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(0, 0), Rgb{0, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width - 1, Height - 1), Rgb{0, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width / 2 - 5, Height / 2 + 5), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width / 2 - 8, Height / 2), Rgb{0, 0, 0}, 0));

    // Behind the camera: culled before any GL call, so not even a draw call is made.
    place.translate(0, 0, 10, false);
    EXPECT_EQ(drawCalls(), 0u);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 0, 0}, 0));
}

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
    EXPECT_TRUE(near(centre(), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(Width / 4 + 1, Height / 4 + 1), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(2, 2), Rgb{0, 255, 0}, 0));
    EXPECT_TRUE(near(pixel(Width - 3, Height / 2), Rgb{0, 255, 0}, 0));

    camera->setUseOverlay(false);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 255, 0}, 0));
}

// The number of pixels of `colour` in the run of n pixels from (x, y), along a row or a column.
static int countOf(std::vector<unsigned char> const& px, int x, int y, int n, bool row, Rgb colour) {
    int found = 0;
    for (int i = 0; i < n; ++i) {
        std::size_t at = (std::size_t(y + (row ? 0 : i)) * GLDrawTest::Width + x + (row ? i : 0)) * 3;
        found += px[at] == colour.r && px[at + 1] == colour.g && px[at + 2] == colour.b;
    }
    return found;
}

TEST_F(GLViewRendererTest, TwoViewportsShowTheirCamerasSideBySideEachWithItsOwnAspect) {
    // A narrow viewport on the left (16 x 64, aspect 1/4) and a wide one on the right
    // (48 x 64, aspect 3/4), each with its own camera and scene.
    SharedPtr<Velun::Camera> left = addCamera();
    addQuad(root(), 0, 0, -4, QuadShape(), colorMaterial(Color(1, 0, 0)));
    addViewport(left, 0.0f, 0.0f, 0.25f, 1.0f);

    Velun::SceneGraph& other = addScene();
    addQuad(*other.getRoot(), 0, 0, -4, QuadShape(), colorMaterial(Color(0, 1, 0)));
    addViewport(addCamera(false, other.getRoot()), 0.25f, 0.0f, 0.75f, 1.0f);

    frame();
    Rgb const red{255, 0, 0}, green{0, 255, 0};
    // Both cameras see a 2 x 2 quad at distance 4 under a vertical field of 90 degrees:
    // 16 of the 64 rows. A square stays square in either viewport.
    int redRows = countOf(mPixels, 8, 0, Height, false, red);
    int greenRows = countOf(mPixels, 40, 0, Height, false, green);
    EXPECT_NEAR(redRows, 16, 1);
    EXPECT_NEAR(greenRows, 16, 1);
    EXPECT_NEAR(countOf(mPixels, 0, Height / 2, 16, true, red), redRows, 1);
    EXPECT_NEAR(countOf(mPixels, 16, Height / 2, Width - 16, true, green), greenRows, 1);
    // Neither picture spills into the other's viewport.
    EXPECT_EQ(countOf(mPixels, 16, Height / 2, Width - 16, true, red), 0);
    EXPECT_EQ(countOf(mPixels, 0, Height / 2, 16, true, green), 0);
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
    EXPECT_FALSE(sWindow->saveScreenshot("/nonexistent-directory/shot.png"));
    EXPECT_EQ(logLines(), std::vector<std::string>{"render.opengl.GLScreenshot: Could not save the image "
                                                   "/nonexistent-directory/shot.png: could not open file"});
}

}  // namespace RenderGLTest
