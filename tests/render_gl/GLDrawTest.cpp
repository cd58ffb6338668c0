#include <cmath>

#include "geometry/ElementData.h"
#include "support/GLDrawFixture.h"

using Velun::Color;
using Velun::Texture;

namespace RenderGLTest {

using GLGeometryRendererTest = GLDrawTest;

TEST_F(GLGeometryRendererTest, ModifiedDataIsUploadedOnceAfterTheChangeNotOnEveryFrame) {
    addViewport(addCamera());
    SharedPtr<Velun::Geometry> quad = makeQuad(QuadShape{-1, -1, 1, 1, 0, true, true, Color(1, 0, 0)});
    addObject(root(), 0, 0, -5, quad, SharedPtr<Velun::Material>(new Velun::Material()));
    Velun::VertexData& vertices = *dynamic_cast<Velun::VertexData*>(quad->getIndexedDataSet(0));

    frame();
    EXPECT_TRUE(near(centre(), Rgb{255, 0, 0}, 0));
    unsigned int const afterFirst = context().getBufferLoadCount();
    frame();
    frame();
    EXPECT_EQ(context().getBufferLoadCount(), afterFirst);

    // A change stamps the set; the next frame loads its buffers again, later ones don't.
    for (unsigned int i = 0; i < 4; ++i) {
        vertices.setCurrentVertex(i);
        vertices.setColor(0, 0, 1, 1);
    }
    vertices.setModified();
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 0, 255}, 0));
    unsigned int const afterChange = context().getBufferLoadCount();
    EXPECT_GT(afterChange, afterFirst);
    frame();
    frame();
    frame();
    EXPECT_EQ(context().getBufferLoadCount(), afterChange);
}

TEST_F(GLGeometryRendererTest, WireframeShadingDrawsOnlyTheEdges) {
    SharedPtr<Velun::Camera> camera = addCamera();
    camera->getCamSettings().getRenderSettings()->setShadingMode(Velun::RenderSettings::ShadeWireframe);
    addViewport(camera);
    addQuad(root(), 0, 0, -5, QuadShape{-2, -2, 2, 2}, colorMaterial(Color(1, 1, 1)));
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 0, 0}, 0));
    int edge = 0;
    for (int x = 0; x < Width; ++x)
        edge += pixel(x, Height / 2).r == 255;
    EXPECT_EQ(edge, 2);  // the left and the right edge cross the middle row

    camera->getCamSettings().getRenderSettings()->setShadingMode(Velun::RenderSettings::ShadeSmooth);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{255, 255, 255}, 0));
}

TEST_F(GLGeometryRendererTest, VertexElementIsDrawnFromItsOwnVertices) {
    addViewport(addCamera());
    // A geometry without a shared set: one element with vertices of its own.
    Velun::GeometryData* geometry = new Velun::GeometryData("strip");
    Velun::VertexElementData* strip = new Velun::VertexElementData(Velun::GeometryElement::TriangleStrip);
    Velun::VertexData& data = strip->getVertexData();
    data.setUseVertex(true);
    data.initialize(4, 4);
    float const corners[4][2] = {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}};
    for (auto const& c : corners) {
        data.addVertex();
        data.setVertex(c[0], c[1], 0);
    }
    geometry->createGroup().addElement(*strip);
    geometry->setBoundingVolume(
        new Velun::BoundingBox(Velun::Point(-1, -1, -0.1f), Velun::Point(1, 1, 0.1f)));

    addObject(root(), 0, 0, -5, SharedPtr<Velun::Geometry>(geometry), colorMaterial(Color(0, 1, 1)));
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 255, 255}, 0));
}

class GLTextureDrawTest : public GLDrawTest {
protected:
    // A 2 x 2 quad at distance 2 covers the middle half of the view: pixels 16 to 47.
    SharedPtr<Velun::Material> texturedQuad(unsigned int layers) {
        SharedPtr<Velun::Material> material(new Velun::Material());
        addQuad(root(), 0, 0, -2, QuadShape{-1, -1, 1, 1, layers}, material);
        return material;
    }
};

TEST_F(GLTextureDrawTest, TexelsShowWhereTheCoordinatesPutThemModulatingTheVertexColour) {
    addViewport(addCamera());
    // Row 0 (red, green) lies at t = 0, the bottom of the quad; row 1 (blue, white) at
    // the top; all of it times the vertex colour (0.5, 1, 1).
    SharedPtr<Velun::Material> material = texturedQuad(1);
    material->setTexture(0, makeTexture(2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));
    material->setUseDefaultVertexColor(true);
    material->setDefaultVertexColor(Color(0.5f, 1.0f, 1.0f));
    frame();
    EXPECT_TRUE(near(pixel(24, 40), Rgb{128, 0, 0}, 1));
    EXPECT_TRUE(near(pixel(40, 40), Rgb{0, 255, 0}, 0));
    EXPECT_TRUE(near(pixel(24, 24), Rgb{0, 0, 255}, 0));
    EXPECT_TRUE(near(pixel(40, 24), Rgb{128, 255, 255}, 1));
    EXPECT_TRUE(near(pixel(8, 8), Rgb{0, 0, 0}, 0));
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
    addQuad(root(), 0, 0, -2, QuadShape{-1, -1, 1, 1, 2, false, true, Color(1, 1, 1, 0.25f)}, material);
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
    addQuad(root(), -2.5f, 0, -5, QuadShape{-1, -1, 1, 1, 2}, both);
    SharedPtr<Velun::Material> single(new Velun::Material());
    single->setTexture(0, makeTexture(1, 1, {255, 255, 0}));
    addQuad(root(), 2.5f, 0, -5, QuadShape{-1, -1, 1, 1, 1}, single);
    frame();
    EXPECT_TRUE(near(pixel(Width / 2 - 16, Height / 2), Rgb{0, 0, 255}, 0));
    // A leftover blue unit 1 would turn yellow into black.
    EXPECT_TRUE(near(pixel(Width / 2 + 16, Height / 2), Rgb{255, 255, 0}, 0));
}

// Fixed-function lighting of a white default material (ambient 0.2, diffuse 0.8, no
// specular) under GL's global ambient of 0.2: a vertex gets
//   0.2 * 0.2 + light ambient * 0.2 + light diffuse * 0.8 * max(0, N.L)
// per enabled light (directional: no attenuation).
class GLLightingTest : public GLDrawTest {
protected:
    // A white quad facing the camera, lit by the pass's lights.
    void addLitQuad(float x, bool normals) {
        addQuad(root(), x, 0, -5, QuadShape{-1, -1, 1, 1, 0, normals},
                SharedPtr<Velun::Material>(new Velun::Material()));
    }

    Velun::Light& addDirectionalLight(float tiltRadians) {
        Velun::TransformationNode& place = own(new Velun::TransformationNode());
        place.rotateX(tiltRadians, false);
        Velun::Light& light = own(new Velun::Light());
        light.setLightType(Velun::Light::Directional);
        place.setChild(light);
        root().attachChild(place);
        return light;
    }

    static int lit(float nDotL, float lightAmbient = 0.2f) {
        return toByte(0.04f + lightAmbient * 0.2f + 0.8f * std::max(0.0f, nDotL));
    }
};

// One light at the camera, changed from case to case, over a white quad 5 units away whose
// corners see it at cos = 5 / sqrt(27) off their normals (and off a spot's axis).
TEST_F(GLLightingTest, EachKindOfLightShadesByItsParameters) {
    using L = Velun::Light;
    struct Case {
        const char* name;
        L::LightType type;
        float tilt;  // about x, radians
        bool enabled;
        Color diffuse;
        float attenuation, cutoff, exponent;
        Rgb expected;
    };
    float const cosine = 5 / std::sqrt(27.0f);
    int const headOn = lit(1.0f), global = toByte(0.04f), point = lit(cosine);
    int const attenuated = toByte(0.04f + (0.04f + 0.8f * cosine) / (1 + 0.25f * std::sqrt(27.0f)));
    int const spot = toByte(0.04f + cosine * cosine * (0.04f + 0.8f * cosine));
    Color const white(1, 1, 1);
    auto grey = [](int v) { return Rgb{v, v, v}; };
    Case const cases[] = {
        {"directional, head on", L::Directional, 0, true, white, 0, 180, 0, grey(headOn)},
        {"directional, tilted 60 degrees", L::Directional, 1.0472f, true, white, 0, 180, 0, grey(lit(0.5f))},
        {"disabled: the global ambient only", L::Directional, 0, false, white, 0, 180, 0, grey(global)},
        {"red", L::Directional, 0, true, Color(1, 0, 0), 0, 180, 0, {headOn, toByte(0.08f), toByte(0.08f)}},
        {"point, linear attenuation", L::PointLight, 0, true, white, 0.25f, 180, 0, grey(attenuated)},
        {"spot, inside its cone", L::Spot, 0, true, white, 0, 30, 2, grey(spot)},
        {"spot, outside its cone", L::Spot, 0, true, white, 0, 10, 0, grey(global)},
        {"point after a spot: no cone", L::PointLight, 0, true, white, 0, 10, 0, grey(point)},
    };
    addViewport(addCamera(true));
    addLitQuad(0, true);
    Velun::TransformationNode& place = own(new Velun::TransformationNode());
    Velun::Light& light = own(new Velun::Light());
    place.setChild(light);
    root().attachChild(place);
    float tilt = 0;
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        place.rotateX(c.tilt - tilt, true);
        tilt = c.tilt;
        light.setLightType(c.type);
        light.setEnabled(c.enabled);
        light.setDiffuseColor(c.diffuse);
        light.setLinearAttenuation(c.attenuation);
        light.setSpotCutoff(c.cutoff);
        light.setSpotExponent(c.exponent);
        frame();
        EXPECT_TRUE(near(centre(), c.expected));
    }
}

TEST_F(GLLightingTest, GeometryWithoutNormalsFacesItsOwnPlusZ) {
    addViewport(addCamera(true));
    addDirectionalLight(0.0f);
    // First a quad whose normals face away from the light, so that a leftover current
    // normal would darken the second quad, which has none.
    addQuad(root(), -2, 0, -5, QuadShape{-1, -1, 1, 1, 0, true},
            SharedPtr<Velun::Material>(new Velun::Material()))
        .rotateY(float(M_PI), true);
    addLitQuad(2, false);
    frame();
    int const headOn = lit(1.0f), dark = lit(-1.0f);
    EXPECT_TRUE(near(pixel(Width / 2 - 13, Height / 2), Rgb{dark, dark, dark}));
    EXPECT_TRUE(near(pixel(Width / 2 + 13, Height / 2), Rgb{headOn, headOn, headOn}));
}

// Exponential fog of density 0.04 towards (0.155, 0.415, 0.545): a fragment at eye
// distance z keeps f = exp(-0.04 z) of its colour.
TEST_F(GLLightingTest, FogBlendsTowardsTheFogColourWithDistance) {
    SharedPtr<Velun::Camera> camera = addCamera(false);
    camera->getCamSettings().getRenderSettings()->setUseFog(true);
    addViewport(camera);
    addQuad(root(), -3, 0, -5, QuadShape(), colorMaterial(Color(1, 0, 0)));
    addQuad(root(), 6, 0, -10, QuadShape(), colorMaterial(Color(1, 0, 0)));
    frame();
    auto fogged = [](float z) {
        float f = std::exp(-0.04f * z);
        return Rgb{toByte(f + (1 - f) * 0.155f), toByte((1 - f) * 0.415f), toByte((1 - f) * 0.545f)};
    };
    EXPECT_TRUE(near(pixel(Width / 2 - 19, Height / 2), fogged(5)));
    EXPECT_TRUE(near(pixel(Width / 2 + 19, Height / 2), fogged(10)));

    camera->getCamSettings().getRenderSettings()->setUseFog(false);
    frame();
    EXPECT_TRUE(near(pixel(Width / 2 + 19, Height / 2), Rgb{255, 0, 0}, 0));
}

TEST_F(GLGeometryRendererTest, SecondaryColoursAddToTheirOwnQuadOnly) {
    addViewport(addCamera());
    Color const dark(0.5f, 0, 0);
    addQuad(root(), 0, 0, -5, QuadShape{-2, -1, 0, 1, 0, false, true, dark, true, Color(0, 0, 1)},
            SharedPtr<Velun::Material>(new Velun::Material()));
    addQuad(root(), 0, 0, -5, QuadShape{0, -1, 2, 1, 0, false, true, dark},
            SharedPtr<Velun::Material>(new Velun::Material()));
    frame();
    EXPECT_TRUE(near(pixel(Width / 2 - 8, Height / 2), Rgb{128, 0, 255}));
    EXPECT_TRUE(near(pixel(Width / 2 + 8, Height / 2), Rgb{128, 0, 0}));
}

}  // namespace RenderGLTest
