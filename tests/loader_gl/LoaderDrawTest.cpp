// Loaded models and images on screen: the jeep from its MS3D file with its JPEG, and a
// quad per test image, drawn by the GL back end into an Xvfb window and read back.

#include <memory>
#include <set>

#include "loader/EngineFixture.h"
#include "plugins/loader/devil/DevILPlugin.h"
#include "plugins/loader/ms3d/Ms3dPlugin.h"
#include "support/GLDrawFixture.h"
#include "texture/TextureManager.h"

// Mesa and libX11 keep small allocations of their own until exit.
extern "C" const char* __asan_default_options() { return "detect_leaks=0"; }

using namespace Velun;
using Dorvan::SharedPtr;
using RenderGLTest::Rgb;

namespace {

const int kSize = RenderGLTest::GLDrawTest::Width;

// The drawing tests' window, with both loaders, in a working directory of test data.
class LoaderDrawTest : public RenderGLTest::GLDrawTest {
protected:
    void SetUp() override {
        GLDrawTest::SetUp();
        mData.reset(new DataDirectory());
        DataDirectory::mapNames();
        mImages.registerPlugin();
        mModels.registerPlugin();
        addViewport(addCamera());
    }

    void TearDown() override {
        GLDrawTest::TearDown();
        mModels.unregisterPlugin();
        mImages.unregisterPlugin();
        mData.reset();
    }

    std::unique_ptr<DataDirectory> mData;
    DevILPlugin mImages;
    Ms3dPlugin mModels;
};

}  // namespace

TEST_F(LoaderDrawTest, EveryImageFormatShowsItsTrueColours) {
    struct Case {
        const char* name;
        int tolerance;  // lossy formats come back close, not exact
    };
    const Case cases[] = {{"rgb.png", 0},    {"rgba.png", 0},      {"palette.png", 0},     {"deep.png", 1},
                          {"quads.jpg", 12}, {"quads.tga", 0},     {"quads-alpha.tga", 0}, {"quads.bmp", 0},
                          {"quads.dds", 0},  {"quads-dxt1.dds", 8}};
    // The image's first row (red, green) at t = 0, the bottom of a quad filling the view;
    // blue and white above.
    const Rgb expected[4] = {{0, 0, 255}, {255, 255, 255}, {255, 0, 0}, {0, 255, 0}};
    const int at[4][2] = {{kSize / 4, kSize / 4},
                          {3 * kSize / 4, kSize / 4},
                          {kSize / 4, 3 * kSize / 4},
                          {3 * kSize / 4, 3 * kSize / 4}};
    for (const Case& c : cases) {
        SharedPtr<TextureSource> image =
            VelunCore::getSingleton().getResourceManager().getTextureManager().getTextureSource(c.name);
        ASSERT_TRUE(image) << c.name;
        SharedPtr<Texture> texture(new Texture2D(image));
        texture->setAllFilters(Texture::Nearest);
        texture->setTexMode(Texture::Replace);
        SharedPtr<Material> material(new Material());
        material->setUseAlphaTest(false);
        material->setTexture(0, texture);
        addQuad(root(), 0, 0, -1, RenderGLTest::QuadShape{-1, -1, 1, 1, 1}, material);
        frame();
        for (int i = 0; i < 4; ++i) {
            Rgb got = pixel(at[i][0], at[i][1]);
            EXPECT_TRUE(RenderGLTest::near(got, expected[i], c.tolerance))
                << c.name << " at " << at[i][0] << "," << at[i][1];
        }
        mNodes.clear();
    }
}

TEST_F(LoaderDrawTest, TheJeepStandsTextured) {
    std::unique_ptr<ObjectNode> made(
        VelunCore::getSingleton().getResourceManager().getObjectManager().createObject("jeep1.ms3d"));
    ASSERT_TRUE(made);
    // Seen from its left side, a little from above: it is 17 units long along z.
    TransformationNode& place = own(new TransformationNode());
    place.translate(0, -4, -13, false);
    place.rotateX(0.35f, true);
    place.rotateY(1.5708f, true);
    place.setChild(own(made.release()));
    root().attachChild(place);
    frame();

    // The jeep covers the middle of the picture, in many colours of its texture; the
    // corners stay background.
    std::set<int> colours;
    int covered = 0;
    const Rgb background = pixel(0, 0);
    for (int y = kSize / 4; y < 3 * kSize / 4; ++y)
        for (int x = kSize / 8; x < 7 * kSize / 8; ++x) {
            Rgb p = pixel(x, y);
            if (!RenderGLTest::near(p, background, 0)) {
                ++covered;
                colours.insert((p.r << 16) | (p.g << 8) | p.b);
            }
        }
    EXPECT_GT(covered, kSize * kSize / 8);
    EXPECT_GT(colours.size(), 50u);
    EXPECT_TRUE(RenderGLTest::near(pixel(kSize - 1, 0), background, 0));
}
