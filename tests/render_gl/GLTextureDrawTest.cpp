#include "support/GLDrawFixture.h"

namespace RenderGLTest {

using Velun::Color;
using Velun::Texture;

class GLTextureDrawTest : public GLDrawTest {
protected:
    // A 2 x 2 quad at distance 2 covers the middle half of the view: pixels 16 to 47.
    SharedPtr<Velun::Material> texturedQuad(unsigned int layers) {
        SharedPtr<Velun::Material> material(new Velun::Material());
        QuadSpec shape;
        shape.layers = layers;
        addQuad(root(), 0, 0, -2, shape, material);
        return material;
    }
};

TEST_F(GLTextureDrawTest, TexturedQuadShowsTheTexelsWhereItsCoordinatesPutThem) {
    addViewport(addCamera());
    // Row 0 (red, green) lies at t = 0, the bottom of the quad; row 1 (blue, white) at
    // the top.
    SharedPtr<Velun::Material> material = texturedQuad(1);
    material->setTexture(0, makeTexture(2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));
    frame();
    savePicture("texture");
    EXPECT_TRUE(near(pixel(24, 40), Rgb{255, 0, 0}, 0));
    EXPECT_TRUE(near(pixel(40, 40), Rgb{0, 255, 0}, 0));
    EXPECT_TRUE(near(pixel(24, 24), Rgb{0, 0, 255}, 0));
    EXPECT_TRUE(near(pixel(40, 24), Rgb{255, 255, 255}, 0));
    EXPECT_TRUE(near(pixel(8, 8), Rgb{0, 0, 0}, 0));
}

TEST_F(GLTextureDrawTest, TextureModulatesTheVertexColour) {
    addViewport(addCamera());
    SharedPtr<Velun::Material> material = texturedQuad(1);
    material->setTexture(0, makeTexture(1, 1, {255, 128, 64}));
    material->setUseDefaultVertexColor(true);
    material->setDefaultVertexColor(Color(0.5f, 1.0f, 1.0f));
    frame();
    EXPECT_TRUE(near(centre(), Rgb{128, 128, 64}, 2));
}

// Layer 0 (1, 0.5, 0) over white vertices of alpha 0.25 gives "previous";
// layer 1 (0.5, 1, 0.25), constant colour (0.25, 0.5, 0.75), is combined by its mode.
TEST_F(GLTextureDrawTest, TwoLayersCombineByTheSecondTexturesMode) {
    struct Case {
        Texture::TexMode mode;
        Rgb expected;
    };
    Case const cases[] = {
        {Texture::Modulate, {128, 128, 0}},
        {Texture::Replace, {128, 255, 64}},
        {Texture::Add, {255, 255, 64}},
        {Texture::Decal, {128, 255, 64}},
        {Texture::PassPrevious, {255, 128, 0}},
        {Texture::ModulateColor, {128, 128, 0}},
        {Texture::InterpolateByVertexAlpha, {223, 160, 16}},
        {Texture::ModulateConstant, {32, 128, 48}},
    };
    addViewport(addCamera());
    SharedPtr<Velun::Material> material(new Velun::Material());
    material->setUseAlphaTest(false);
    QuadSpec shape;
    shape.layers = 2;
    shape.colors = true;
    shape.color = Color(1, 1, 1, 0.25f);
    addQuad(root(), 0, 0, -2, shape, material);
    material->setTexture(0, makeTexture(1, 1, {255, 128, 0}));
    for (Case const& c : cases) {
        SCOPED_TRACE(c.mode);
        SharedPtr<Velun::Texture> second = makeTexture(1, 1, {128, 255, 64}, c.mode);
        second->setConstantColor(Color(0.25f, 0.5f, 0.75f, 1.0f));
        material->setTexture(1, second);
        frame();
        EXPECT_TRUE(near(centre(), c.expected, 3));
    }
}

TEST_F(GLTextureDrawTest, UnitsOfAFormerTwoLayerDrawAreOffForASingleLayerOne) {
    addViewport(addCamera());
    SharedPtr<Velun::Material> both(new Velun::Material());
    both->setTexture(0, makeTexture(1, 1, {255, 255, 255}));
    both->setTexture(1, makeTexture(1, 1, {0, 0, 255}));
    QuadSpec two;
    two.layers = 2;
    addQuad(root(), -2.5f, 0, -5, two, both);
    SharedPtr<Velun::Material> single(new Velun::Material());
    single->setTexture(0, makeTexture(1, 1, {255, 255, 0}));
    QuadSpec one;
    one.layers = 1;
    addQuad(root(), 2.5f, 0, -5, one, single);
    frame();
    savePicture("texture_units");
    EXPECT_TRUE(near(pixel(Width / 2 - 16, Height / 2), Rgb{0, 0, 255}, 0));
    // A leftover blue unit 1 would turn yellow into black.
    EXPECT_TRUE(near(pixel(Width / 2 + 16, Height / 2), Rgb{255, 255, 0}, 0));
}

}  // namespace RenderGLTest
