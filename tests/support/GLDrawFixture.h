#pragma once

// The one GL window of a test program, with helpers that build small scenes (quads,
// textures, cameras) and read back what the window shows, and a log keeping every line.

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "core/LogManager.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"
#include "geometry/IndexedQuads.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/GLRenderEngine.h"
#include "plugins/render/opengl/GLScreenshot.h"
#include "plugins/render/opengl/GLViewRenderer.h"
#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"
#include "scene/Branch.h"
#include "scene/Light.h"
#include "scene/Overlay.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "scene/View.h"
#include "support/ChannelLog.h"
#include "support/EngineClock.h"
#include "texture/Texture2D.h"
#include "texture/TextureData.h"

namespace RenderGLTest {

using Dorvan::SharedPtr;

struct Rgb {
    int r, g, b;
};

// Components within `tolerance` of 0..255 values; rasterisers round differently, so
// exact equality would test the driver rather than the engine.
inline ::testing::AssertionResult near(Rgb a, Rgb e, int tolerance = 3) {
    if (std::abs(a.r - e.r) <= tolerance && std::abs(a.g - e.g) <= tolerance &&
        std::abs(a.b - e.b) <= tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "colour (" << a.r << ", " << a.g << ", " << a.b << "), expected ("
                                         << e.r << ", " << e.g << ", " << e.b << ") +-" << tolerance;
}

// A pixel of the picture, (x, y) from the top left, and the colour it should show.
struct Probe {
    int x, y;
    Rgb expected;
};

inline int toByte(float v) { return int(std::lround(v * 255.0f)); }

// A quad in the z = 0 plane of its node, from (x0, y0) to (x1, y1), facing +Z; written
// in this order, as QuadShape{-2, -2, 2, 2, 1} for a larger quad of one texture layer.
struct QuadShape {
    float x0 = -1, y0 = -1, x1 = 1, y1 = 1;
    unsigned int layers = 0;  // texture layers, coordinates 0..1 over the quad
    bool normals = false;
    bool colors = false;
    Velun::Color color = Velun::Color(1, 1, 1, 1);
    bool secondaryColors = false;
    Velun::Color secondaryColor = Velun::Color();
};

inline SharedPtr<Velun::Geometry> makeQuad(QuadShape const& shape) {
    Velun::GeometryData* geometry = new Velun::GeometryData("quad");
    SharedPtr<Velun::VertexData> vertices(new Velun::VertexData());
    vertices->setUseVertex(true);
    vertices->setUseNormal(shape.normals);
    vertices->setUseColor(shape.colors);
    vertices->setUseSecondaryColor(shape.secondaryColors);
    vertices->setUseTexCoordinates(shape.layers > 0);
    for (unsigned int l = 0; l < shape.layers; ++l)
        vertices->addTextureIndex(l);
    vertices->initialize(4, 4);
    float const corners[4][2] = {
        {shape.x0, shape.y0}, {shape.x1, shape.y0}, {shape.x1, shape.y1}, {shape.x0, shape.y1}};
    float const uv[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (int i = 0; i < 4; ++i) {
        vertices->addVertex();
        vertices->setVertex(corners[i][0], corners[i][1], 0.0f);
        vertices->setNormal(0, 0, 1);  // each a no-op unless the set has the part
        vertices->setColor(shape.color);
        vertices->setSecondaryColor(shape.secondaryColor.r, shape.secondaryColor.g, shape.secondaryColor.b);
        for (unsigned int l = 0; l < shape.layers; ++l)
            vertices->setTexCoordinate(uv[i][0], uv[i][1], l);
    }
    geometry->setIndexedVertexData(vertices);
    Velun::IndexedQuads* quad = new Velun::IndexedQuads(4);
    quad->addQuad(0, 1, 2, 3);
    geometry->createGroup().addElement(*quad);
    geometry->setBoundingVolume(new Velun::BoundingBox(Velun::Point(shape.x0, shape.y0, -0.01f),
                                                       Velun::Point(shape.x1, shape.y1, 0.01f)));
    return SharedPtr<Velun::Geometry>(geometry);
}

// Plain colour, no lighting influence unless the pass lights it, no alpha test.
inline SharedPtr<Velun::Material> colorMaterial(Velun::Color const& color) {
    SharedPtr<Velun::Material> material(new Velun::Material());
    material->setUseDefaultVertexColor(true);
    material->setDefaultVertexColor(color);
    material->setUseAlphaTest(false);
    return material;
}

// A width x height image of the given bytes (row 0 first).
inline SharedPtr<Velun::TextureSource> makeImage(int width, int height,
                                                 std::vector<unsigned char> const& bytes,
                                                 Velun::Color::Format format = Velun::Color::Rgb) {
    Velun::TextureInfo info(width, height, 1, Velun::DataType::UnsignedByte, format);
    Dorvan::CowMemPtr<void> data;
    data.alloc(bytes.size());
    std::copy(bytes.begin(), bytes.end(), static_cast<unsigned char*>(data.get()));
    return SharedPtr<Velun::TextureSource>(new Velun::TextureData(info, data));
}

// A width x height RGB texture of the given texels (row 0 first), nearest filtering.
inline SharedPtr<Velun::Texture> makeTexture(int width, int height, std::vector<unsigned char> const& rgb,
                                             Velun::Texture::TexMode mode = Velun::Texture::Modulate) {
    SharedPtr<Velun::Texture> texture(new Velun::Texture2D(makeImage(width, height, rgb)));
    texture->setAllFilters(Velun::Texture::Nearest);
    texture->setAllWrapModes(Velun::Texture::ClampToEdge);
    texture->setTexMode(mode);
    return texture;
}

class GLDrawTest : public ::testing::Test {
public:
    static constexpr int Width = 64;
    static constexpr int Height = 64;

    // One engine and window for the whole program (SDL has one video surface), opened by
    // the first drawing test and closed at the end of the program, or by a test that needs
    // the engine or SDL to itself.
    static void startWindow() {
        sClock = new VelunTest::EngineClock();
        Velun::VelunCore::getSingleton().getLogManager().registerBackend(sLog);
        sEngine = new Velun::GLRenderEngine();
        // On a loaded machine an X connection now and then fails to open (xdpyinfo
        // fails alike), so a few attempts are made before the tests give up.
        for (int attempt = 0; attempt < 5 && !sWindow; ++attempt) {
            if (attempt > 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
            if (sEngine->initialize())
                sWindow = static_cast<Velun::GLSDLRenderWindow*>(
                    sEngine->createRenderWindow(1, "render_gl", Width, Height, false, 0, 0, nullptr));
        }
    }

    static void stopWindow() {
        delete std::exchange(sWindow, nullptr);
        delete std::exchange(sEngine, nullptr);
        delete std::exchange(sClock, nullptr);
    }

protected:
    void SetUp() override {
        if (!sClock)
            startWindow();
        ASSERT_NE(sWindow, nullptr);
        sLog.mLines.clear();
        mTime = 1000;
        sClock->setTime(mTime);
        mScene = &addScene();
        mTarget = SharedPtr<Velun::RenderTarget>(new Velun::RenderTarget());
        sWindow->attachRenderTarget(mTarget);
    }

    void TearDown() override {
        if (!sWindow || !mScene)
            return;  // SetUp failed: nothing was made
        sWindow->detachRenderTarget();
        mTarget = SharedPtr<Velun::RenderTarget>();
        mCameras.clear();
        mNodes.clear();  // detach from their scenes before the scenes go
        Velun::SceneManager& scenes = Velun::VelunCore::getSingleton().getSceneManager();
        for (Velun::Overlay* overlay : mOverlays)
            scenes.deleteOverlay(*overlay);
        for (Velun::SceneGraph* scene : mScenes)
            scenes.deleteSceneGraph(*scene);
    }

    template <class T>
    T& own(T* node) {
        mNodes.emplace_back(node);
        return *node;
    }

    Velun::Branch& root() { return *mScene->getRoot(); }

    // An object of one subobject, placed at (x, y, z) below `parent`; the object's default
    // material 0 is `material`. Returns the placing transformation.
    Velun::TransformationNode& addObject(Velun::Branch& parent, float x, float y, float z,
                                         SharedPtr<Velun::Geometry> geometry,
                                         SharedPtr<Velun::Material> material) {
        Velun::TransformationNode& place = own(new Velun::TransformationNode());
        place.translate(x, y, z, false);
        Velun::GeometryObject& object = own(new Velun::GeometryObject());
        Velun::GeometrySubobject* sub = new Velun::GeometrySubobject();
        sub->setGeometry(geometry, 0);
        object.addSubobject(*sub);
        if (!material.isNull())
            object.setDefaultMaterial(0, material);
        place.setChild(object);
        parent.attachChild(place);
        return place;
    }
    Velun::TransformationNode& addQuad(Velun::Branch& parent, float x, float y, float z,
                                       QuadShape const& shape, SharedPtr<Velun::Material> material) {
        return addObject(parent, x, y, z, makeQuad(shape), material);
    }

    // A camera at the origin of the scene (or of `parent`) looking down -Z: near 0.1, fovY 90.
    SharedPtr<Velun::Camera> addCamera(bool lights = false, Velun::Branch* parent = nullptr) {
        Velun::Camera* camera = new Velun::Camera();
        SharedPtr<Velun::Camera> shared(camera);
        SharedPtr<Velun::RenderSettings> settings(new Velun::RenderSettings());
        settings->setUseLights(lights);
        camera->getCamSettings().setRenderSettings(settings);
        camera->getCamSettings().setFovY(90.0f);
        (parent ? *parent : root()).attachChild(*camera);
        mCameras.push_back(shared);
        return shared;
    }

    SharedPtr<Velun::Viewport> addViewport(SharedPtr<Velun::Camera> const& camera, float x = 0, float y = 0,
                                           float w = 1, float h = 1) {
        SharedPtr<Velun::Viewport> viewport(new Velun::Viewport(x, y, w, h));
        viewport->attachCamera(camera);
        mTarget->attachViewport(viewport);
        return viewport;
    }

    // A scene besides the first, drawn and removed with it.
    Velun::SceneGraph& addScene() {
        mScenes.push_back(&Velun::VelunCore::getSingleton().getSceneManager().createSceneGraph());
        return *mScenes.back();
    }

    Velun::Overlay& addOverlay() {
        Velun::Overlay& overlay = Velun::VelunCore::getSingleton().getSceneManager().createOverlay();
        mOverlays.push_back(&overlay);
        return overlay;
    }

    // Update pass over every scene, one frame, and the picture it drew.
    void frame() {
        mTime += 20;
        sClock->setTime(mTime);
        for (Velun::SceneGraph* scene : mScenes)
            scene->getUpdateTraverser()->run(mTime);
        for (Velun::Overlay* overlay : mOverlays)
            overlay->getUpdateTraverser()->run(mTime);
        // The window's frame without its swap, so the picture stays in the back buffer.
        mDrawCalls = sEngine->renderTarget(mTarget.get(), sWindow->getGLRenderContext(), Width, Height);
        ASSERT_TRUE(Velun::GLScreenshot::readPixels(GL_BACK, 0, 0, Width, Height, mPixels));
    }

    // (x, y) from the top left, as in the picture.
    Rgb pixel(int x, int y) const {
        std::size_t i = (std::size_t(y) * Width + std::size_t(x)) * 3;
        return Rgb{mPixels[i], mPixels[i + 1], mPixels[i + 2]};
    }
    Rgb centre() const { return pixel(Width / 2, Height / 2); }

    // Each probe's pixel in the picture.
    void expectPixels(std::vector<Probe> const& probes, int tolerance = 3) const {
        for (Probe const& p : probes)
            EXPECT_TRUE(near(pixel(p.x, p.y), p.expected, tolerance)) << "at " << p.x << ", " << p.y;
    }

    // A light below a transformation of its own at the scene's root.
    Velun::Light& addLight(Velun::Light::LightType type, Velun::TransformationNode** place = nullptr) {
        Velun::TransformationNode& at = own(new Velun::TransformationNode());
        Velun::Light& light = own(new Velun::Light());
        light.setLightType(type);
        at.setChild(light);
        root().attachChild(at);
        if (place)
            *place = &at;
        return light;
    }

    Velun::GLRenderContext& context() { return *sWindow->getGLRenderContext(); }
    // Lines logged since the test began, as "channel: text".
    static std::vector<std::string>& logLines() { return sLog.mLines; }

    static inline VelunTest::ChannelLog sLog;
    static inline VelunTest::EngineClock* sClock = nullptr;
    static inline Velun::GLRenderEngine* sEngine = nullptr;
    static inline Velun::GLSDLRenderWindow* sWindow = nullptr;

    std::int64_t mTime = 0;
    unsigned int mDrawCalls = 0;  // of the last frame
    Velun::SceneGraph* mScene = nullptr;
    std::vector<Velun::SceneGraph*> mScenes;
    std::vector<Velun::Overlay*> mOverlays;
    SharedPtr<Velun::RenderTarget> mTarget;
    std::vector<SharedPtr<Velun::Camera>> mCameras;
    // Destroyed last-made first, so children leave their parents before these go.
    struct NodeList : std::vector<std::unique_ptr<Velun::Node>> {
        void clear() {
            while (!empty())
                pop_back();
        }
        ~NodeList() { clear(); }
    } mNodes;
    std::vector<unsigned char> mPixels;
};

// Closes the window after the program's last test.
struct GLWindowEnvironment : ::testing::Environment {
    void TearDown() override { GLDrawTest::stopWindow(); }
};

inline ::testing::Environment* const gGLWindowEnvironment =
    ::testing::AddGlobalTestEnvironment(new GLWindowEnvironment());

}  // namespace RenderGLTest
