#include <cmath>
#include <cstdio>
#include <functional>

#include "geometry/IndexedTriangles.h"
#include "particle/LinearForceModel.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "support/GLDrawFixture.h"

using namespace Velun;

namespace RenderGLTest {
namespace {

SharedPtr<Material> plain() { return SharedPtr<Material>(new Material()); }

// Half-transparent by vertex colour; the alpha test would reject alpha 0.5.
SharedPtr<Material> blended() {
    SharedPtr<Material> material = plain();
    material->setUseBlending(true);
    material->setUseAlphaTest(false);
    return material;
}

QuadShape tinted(Color const& color, float half = 1) {
    return QuadShape{-half, -half, half, half, 0, false, true, color};
}

// Fixed-function lighting of a white default material (ambient 0.2, diffuse 0.8, no
// specular) under GL's global ambient of 0.2: a vertex gets
//   0.2 * 0.2 + light ambient * 0.2 + light diffuse * 0.8 * max(0, N.L)
// per enabled light (directional: no attenuation).
int lit(float nDotL) { return toByte(0.08f + 0.8f * std::max(0.0f, nDotL)); }
Rgb grey(int v) { return Rgb{v, v, v}; }

// Exponential fog of density 0.04 towards (0.155, 0.415, 0.545): a fragment at eye
// distance z keeps f = exp(-0.04 z) of its red.
Rgb fogged(float z) {
    float f = std::exp(-0.04f * z);
    return Rgb{toByte(f + (1 - f) * 0.155f), toByte((1 - f) * 0.415f), toByte((1 - f) * 0.545f)};
}

}  // namespace

// Scenes of one frame before a camera at the origin looking down -Z (fovY 90: a quad of
// 2 x 2 at distance 5 spans pixels 26 to 37), each with the pixels it shows; a scene
// turns fog, lights or wireframe on for itself, and the scenes after it show them off again.
// A scene logs nothing unless it says so.
TEST_F(GLDrawTest, EachSceneShowsItsPixels) {
    struct Scene {
        const char* name;
        std::function<void()> build;
        std::vector<Probe> probes;
        std::vector<std::string> log = {};  // the lines the frame logs
    };
    Rgb const black{0, 0, 0}, red{255, 0, 0}, white{255, 255, 255};
    SharedPtr<Camera> camera = addCamera();
    RenderSettings& settings = *camera->getCamSettings().getRenderSettings();
    Scene const scenes[] = {
        {"unlit quad in front",
         [&] { addQuad(root(), 0, 0, -5, QuadShape(), colorMaterial(Color(1, 0, 0))); },
         {{32, 32, red}, {0, 0, black}, {63, 63, black}, {27, 37, red}, {24, 32, black}}},
        // A geometry without a shared set: a fan over the corners of a quad, its own vertices.
        {"an element with vertices of its own",
         [&] {
             GeometryData* geometry = new GeometryData("fan");
             VertexElementData* fan = new VertexElementData(GeometryElement::TriangleFan);
             fan->getVertexData() = static_cast<VertexData&>(*makeQuad(QuadShape())->getIndexedDataSet(0));
             geometry->createGroup().addElement(*fan);
             geometry->setBoundingVolume(new BoundingBox(Point(-1, -1, -0.1f), Point(1, 1, 0.1f)));
             addObject(root(), 0, 0, -5, SharedPtr<Geometry>(geometry), colorMaterial(Color(0, 1, 1)));
         },
         {{32, 32, {0, 255, 255}}}},
        {"fog blends towards the fog colour with distance",
         [&] {
             settings.setUseFog(true);
             addQuad(root(), -3, 0, -5, QuadShape(), colorMaterial(Color(1, 0, 0)));
             addQuad(root(), 6, 0, -10, QuadShape(), colorMaterial(Color(1, 0, 0)));
         },
         {{13, 32, fogged(5)}, {51, 32, fogged(10)}}},
        // First a quad whose normals face away from the light, so that a leftover current
        // normal would darken the second quad, which has none.
        {"lit geometry without normals faces its own +Z",
         [&] {
             settings.setUseLights(true);
             addLight(Light::Directional);
             addQuad(root(), -2, 0, -5, QuadShape{-1, -1, 1, 1, 0, true}, plain()).rotateY(float(M_PI), true);
             addQuad(root(), 2, 0, -5, QuadShape(), plain());
         },
         {{19, 32, grey(lit(-1.0f))}, {45, 32, grey(lit(1.0f))}}},
        {"wireframe shading draws only the edges",
         [&] {
             settings.setShadingMode(RenderSettings::ShadeWireframe);
             addQuad(root(), 0, 0, -5, QuadShape{-2, -2, 2, 2}, colorMaterial(Color(1, 1, 1)));
         },
         {{19, 32, white}, {44, 32, white}, {21, 32, black}, {32, 32, black}, {42, 32, black}}},
        // Row 0 (red, green) lies at t = 0, the bottom of the quad; row 1 (blue, white) at
        // the top; all of it times the vertex colour (0.5, 1, 1).
        {"texels where the coordinates put them, modulating the vertex colour",
         [&] {
             SharedPtr<Material> material = colorMaterial(Color(0.5f, 1.0f, 1.0f));
             material->setTexture(0, makeTexture(2, 2, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255}));
             addQuad(root(), 0, 0, -2, QuadShape{-1, -1, 1, 1, 1}, material);
         },
         {{24, 40, {128, 0, 0}},
          {40, 40, {0, 255, 0}},
          {24, 24, {0, 0, 255}},
          {40, 24, {128, 255, 255}},
          {8, 8, black}}},
        // A leftover blue unit 1 would turn the yellow one-layer quad black.
        {"units of a former two-layer draw are off for a one-layer one",
         [&] {
             SharedPtr<Material> both = plain(), single = plain();
             both->setTexture(0, makeTexture(1, 1, {255, 255, 255}));
             both->setTexture(1, makeTexture(1, 1, {0, 0, 255}));
             single->setTexture(0, makeTexture(1, 1, {255, 255, 0}));
             addQuad(root(), -2.5f, 0, -5, QuadShape{-1, -1, 1, 1, 2}, both);
             addQuad(root(), 2.5f, 0, -5, QuadShape{-1, -1, 1, 1, 1}, single);
         },
         {{16, 32, {0, 0, 255}}, {48, 32, {255, 255, 0}}}},
        {"secondary colours add to their own quad only",
         [&] {
             Color const dark(0.5f, 0, 0);
             addQuad(root(), 0, 0, -5, QuadShape{-2, -1, 0, 1, 0, false, true, dark, true, Color(0, 0, 1)},
                     plain());
             addQuad(root(), 0, 0, -5, QuadShape{0, -1, 2, 1, 0, false, true, dark}, plain());
         },
         {{24, 32, {128, 0, 255}}, {40, 32, {128, 0, 0}}}},
        // Red over black, then green over that; the other order would give (0.5, 0.25, 0).
        {"blended quads are drawn far then near when the near one comes first",
         [&] {
             addQuad(root(), 0, 0, -5, tinted(Color(0, 1, 0, 0.5f)), blended());
             addQuad(root(), 0, 0, -10, tinted(Color(1, 0, 0, 0.5f), 4), blended());
         },
         {{32, 32, {64, 128, 0}}, {32, 21, {128, 0, 0}}}},
        // Red first in the tree, then blue over it; the other order would give (0.5, 0, 0.25).
        {"blended quads at equal distances keep the tree's order",
         [&] {
             addQuad(root(), 0, 0, -5, tinted(Color(1, 0, 0, 0.5f)), blended());
             addQuad(root(), 0, 0, -5, tinted(Color(0, 0, 1, 0.5f)), blended());
         },
         {{32, 32, {64, 0, 128}}}},
        // A quad whose group draws, after its own, triangles of an index type GL refuses.
        {"a GL error of a drawable is logged and drawing goes on",
         [&] {
             SharedPtr<Geometry> geometry = makeQuad(QuadShape());
             IndexedTriangles* broken = new IndexedTriangles(3);
             broken->getIndexList().setIndexType(DataType::Float);
             broken->addTriangle(0, 1, 2);
             static_cast<GeometryData&>(*geometry).getGroup(0)->addElement(*broken);
             addObject(root(), -2, 0, -5, geometry, SharedPtr<Material>());
             addQuad(root(), 2, 0, -5, QuadShape(), colorMaterial(Color(1, 1, 0)));
         },
         {{19, 32, white}, {45, 32, {255, 255, 0}}},
         {"render.opengl.GLObjectRenderer: GL Error: invalid enumerant"}},
        // After a blended, tinted quad, one with no material comes out in the default
        // material's white, opaque and untextured.
        {"a drawable without material is drawn with the default, not with leftover state",
         [&] {
             addQuad(root(), -2, 0, -5, tinted(Color(1, 0, 0, 0.5f)), blended());
             addQuad(root(), 2, 0, -5, QuadShape(), SharedPtr<Material>());
         },
         {{45, 32, white}, {19, 32, {128, 0, 0}}}},
    };
    addViewport(camera);
    for (Scene const& scene : scenes) {
        SCOPED_TRACE(scene.name);
        settings.setUseFog(false);
        settings.setUseLights(false);
        settings.setShadingMode(RenderSettings::ShadeSmooth);
        logLines().clear();
        scene.build();
        frame();
        expectPixels(scene.probes);
        EXPECT_EQ(logLines(), scene.log);
        mNodes.clear();
    }
}

// Layer 0 (1, 0.5, 0) over white vertices of alpha 0.25 gives "previous";
// layer 1 (0.5, 1, 0.25), constant colour (0.25, 0.5, 0.75), is combined by its mode.
TEST_F(GLDrawTest, TwoLayersCombineByTheSecondTexturesMode) {
    std::pair<Texture::TexMode, Rgb> const cases[] = {
        {Texture::Modulate, {128, 128, 0}},
        {Texture::Replace, {128, 255, 64}},
        {Texture::Add, {255, 255, 64}},
        {Texture::Decal, {128, 255, 64}},
        // Towards the constant colour; before ModulateConstant, so that no earlier mode
        // has left it on the unit.
        {Texture::Blend, {159, 128, 48}},
        {Texture::PassPrevious, {255, 128, 0}},
        {Texture::ModulateColor, {128, 128, 0}},
        {Texture::InterpolateByVertexAlpha, {223, 160, 16}},
        {Texture::ModulateConstant, {32, 128, 48}},
    };
    addViewport(addCamera());
    SharedPtr<Material> material = plain();
    material->setUseAlphaTest(false);
    addQuad(root(), 0, 0, -2, QuadShape{-1, -1, 1, 1, 2, false, true, Color(1, 1, 1, 0.25f)}, material);
    material->setTexture(0, makeTexture(1, 1, {255, 128, 0}));
    for (auto const& [mode, expected] : cases) {
        SCOPED_TRACE(mode);
        SharedPtr<Texture> second = makeTexture(1, 1, {128, 255, 64}, mode);
        second->setConstantColor(Color(0.25f, 0.5f, 0.75f, 1.0f));
        material->setTexture(1, second);
        frame();
        EXPECT_TRUE(near(centre(), expected, 3));
    }
}

// One light at the camera, changed from case to case, over a white quad 5 units away whose
// corners see it at cos = 5 / sqrt(27) off their normals (and off a spot's axis).
TEST_F(GLDrawTest, EachKindOfLightShadesByItsParameters) {
    using L = Light;
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
    Case const cases[] = {
        {"directional, tilted 60 degrees", L::Directional, 1.0472f, true, white, 0, 180, 0, grey(lit(0.5f))},
        {"disabled: the global ambient only", L::Directional, 0, false, white, 0, 180, 0, grey(global)},
        {"red", L::Directional, 0, true, Color(1, 0, 0), 0, 180, 0, {headOn, toByte(0.08f), toByte(0.08f)}},
        {"point, linear attenuation", L::PointLight, 0, true, white, 0.25f, 180, 0, grey(attenuated)},
        {"spot, inside its cone", L::Spot, 0, true, white, 0, 30, 2, grey(spot)},
        {"spot, outside its cone", L::Spot, 0, true, white, 0, 10, 0, grey(global)},
        {"point after a spot: no cone", L::PointLight, 0, true, white, 0, 10, 0, grey(point)},
    };
    addViewport(addCamera(true));
    addQuad(root(), 0, 0, -5, QuadShape{-1, -1, 1, 1, 0, true}, plain());
    TransformationNode* place = nullptr;
    Light& light = addLight(L::Directional, &place);
    float tilt = 0;
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        place->rotateX(c.tilt - tilt, true);
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

// A cloud drawn as white point sprites, seen by the fixture's camera (fovY 90) in the plane
// z = -5, where x from -5 to 5 spans the picture: a moving sprite, then a dying and a still one.
TEST_F(GLDrawTest, LivingParticlesAreSpritesWhereTheyAreNow) {
    ASSERT_TRUE(context().usesVertexBuffers());
    ParticleEngine cloud;
    cloud.setForceModel(SharedPtr<ParticleEngine::ForceModel>(new LinearForceModel()));
    cloud.initialize();
    cloud.start();
    addViewport(addCamera());
    SharedPtr<Material> sprites = colorMaterial(Color(1, 1, 1));
    sprites->setUsePointSprites(true);
    sprites->setSpriteSize(8.0f);
    addObject(root(), 0, 0, 0, cloud.getParticleData().getGeometryData(), sprites);
    auto add = [&](float x, float vx, std::int64_t death) {
        cloud.getParticleData().addParticle(Dorvan::TVector<float, 3>(x, 0, -5), death);
        cloud.getParticleData().setVelocity(Dorvan::TVector<float, 3>(vx, 0, 0));
    };
    auto step = [&] {  // the cloud's update and the picture, 20 ms on
        cloud.update(mTime + 20);
        frame();
    };
    auto lit = [&](float x) { return pixel(int(32 + x * 6.4f), Height / 2).g > 128; };
    add(-14, 300, 0);  // 6 units a frame, its first box outside the view
    step();
    step();
    EXPECT_TRUE(lit(-2)) << "moved out of its first box into the view";
    add(0, 0, mTime + 30);
    add(-4, 0, 0);
    step();
    EXPECT_FALSE(lit(-2)) << "the buffer follows the positions";
    EXPECT_TRUE(lit(4) && lit(0) && lit(-4));
    step();
    EXPECT_FALSE(lit(0)) << "died";
    EXPECT_TRUE(lit(-4)) << "drawn after the one that died before it";
    mNodes.clear();  // the cloud's object goes before the cloud
}

TEST_F(GLDrawTest, OverlayCoversTheSceneEvenWhereSceneGeometryIsNearer) {
    SharedPtr<Camera> camera = addCamera();
    addViewport(camera);
    // Scene: a green quad just past the near plane, filling the whole view.
    addQuad(root(), 0, 0, -0.2f, QuadShape(), colorMaterial(Color(0, 1, 0)));

    // Overlay: the unit square is the viewport; a red HUD quad over its middle, at the
    // overlay's origin, which is 2 units from its fixed eye and so far behind the wall.
    Overlay& overlay = addOverlay();
    camera->setOverlay(overlay);
    camera->getOverlaySettings().setRenderSettings(camera->getCamSettings().getRenderSettings());  // unlit
    addQuad(*overlay.getRoot(), 0, 0, 0, QuadShape{0.25f, 0.25f, 0.75f, 0.75f},
            colorMaterial(Color(1, 0, 0)));

    frame();
    expectPixels({{32, 32, {255, 0, 0}}, {17, 17, {255, 0, 0}}, {2, 2, {0, 255, 0}}, {61, 32, {0, 255, 0}}});

    camera->setUseOverlay(false);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{0, 255, 0}, 0));
}

// A narrow viewport on the left (16 x 64, aspect 1/4) and a wide one on the right
// (48 x 64, aspect 3/4), each with its own camera and scene. Both cameras see a 2 x 2 quad
// at distance 4 under a vertical field of 90 degrees: rows 24 to 39, the left viewport's
// whole width, the right one's columns 32 to 47.
TEST_F(GLDrawTest, TwoViewportsShowTheirCamerasSideBySideEachWithItsOwnAspect) {
    addQuad(root(), 0, 0, -4, QuadShape(), colorMaterial(Color(1, 0, 0)));
    addViewport(addCamera(), 0.0f, 0.0f, 0.25f, 1.0f);
    SceneGraph& other = addScene();
    addQuad(*other.getRoot(), 0, 0, -4, QuadShape(), colorMaterial(Color(0, 1, 0)));
    addViewport(addCamera(false, other.getRoot()), 0.25f, 0.0f, 0.75f, 1.0f);
    frame();
    Rgb const red{255, 0, 0}, green{0, 255, 0}, black{0, 0, 0};
    std::vector<Probe> const probes = {{1, 25, red},    {14, 38, red},   {8, 22, black},  {8, 41, black},
                                       {16, 32, black}, {33, 25, green}, {46, 38, green}, {31, 32, black},
                                       {48, 32, black}, {40, 22, black}, {40, 41, black}};
    expectPixels(probes, 0);
}

TEST_F(GLDrawTest, ScreenshotIsSavedAsPngWithTheTopRowFirstOrFailsWithAnErrorLine) {
    std::string const path = std::string(VELUN_BINARY_DIR) + "/render_gl_screenshot_test.png";
    struct Removed {
        std::string path;
        ~Removed() { std::remove(path.c_str()); }
    } const removed{path};
    addViewport(addCamera());
    EXPECT_FALSE(sWindow->saveScreenshot("/nonexistent-directory/shot.png"));
    EXPECT_EQ(logLines(), std::vector<std::string>{"render.opengl.GLScreenshot: Could not save the image "
                                                   "/nonexistent-directory/shot.png: could not open file"});
    // Red above the middle, blue below it.
    addQuad(root(), 0, 0, -5, QuadShape{-5, 0, 5, 5}, colorMaterial(Color(1, 0, 0)));
    addQuad(root(), 0, 0, -5, QuadShape{-5, -5, 5, 0}, colorMaterial(Color(0, 0, 1)));
    mScene->getUpdateTraverser()->run(mTime);
    sWindow->render(mTime);
    ASSERT_TRUE(sWindow->saveScreenshot(path));
    DevILTextureSourceLoader loader;
    ASSERT_TRUE(loader.initialize());
    SharedPtr<TextureSource> image = loader.load(NameMapper::ResourceInfo("shot", path, "png"));
    ASSERT_FALSE(image.isNull());
    TextureInfo const& info = image->getTextureInfo();
    EXPECT_EQ(info.getPixelColor(image->getPixel(0, 0, 0)).r, 1.0f);                   // top left: red
    EXPECT_EQ(info.getPixelColor(image->getPixel(Width - 1, Height - 1, 0)).b, 1.0f);  // bottom right: blue
    loader.shutdown();
}

}  // namespace RenderGLTest
