// The Velun showcase: a small world with textured models, several lights, fog, a
// blended pane of glass, a spinning model, a camera that trails a driving jeep in a
// second viewport, and a heads-up display in an overlay.
//
//   showcase [--frames N] [--screenshots DIR] [--size WxH] [--assets DIR]
//
// Escape or closing the window ends it; arrow keys, the mouse (drag) and its wheel
// move the camera. With --frames it stops by itself after N frames; with --screenshots
// it writes PNG pictures of three moments to DIR. At exit it prints frame statistics.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Shapes.h"
#include "Velun.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace {

const float Pi = 3.14159265f;
const float JeepScale = 0.25f;

// Key symbols as the SDL input provider reports them.
enum Key { KeyEscape = 27, KeyUp = 273, KeyDown = 274, KeyRight = 275, KeyLeft = 276 };

struct Options {
    int frames = 0;  // 0: until the window is closed
    std::string screenshots;
    int width = 800;
    int height = 600;
    std::string assets = VELUN_EXAMPLE_ASSETS;
};

bool parseOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        bool hasValue = i + 1 < argc;
        if (arg == "--frames" && hasValue) {
            options.frames = std::atoi(argv[++i]);
        } else if (arg == "--screenshots" && hasValue) {
            options.screenshots = argv[++i];
        } else if (arg == "--size" && hasValue) {
            if (std::sscanf(argv[++i], "%dx%d", &options.width, &options.height) != 2 || options.width < 16 ||
                options.height < 16)
                return false;
        } else if (arg == "--assets" && hasValue) {
            options.assets = argv[++i];
        } else {
            return false;
        }
    }
    return options.frames >= 0;
}

// A camera that circles a point: yaw and pitch in radians, distance in scene units.
struct Orbit {
    float yaw = 0.35f;
    float pitch = 0.32f;
    float distance = 12.0f;
    Point target = Point(0.0f, 1.0f, 0.0f);

    void apply(Transformation& place) const {
        place.reset();
        place.translate(0.0f, 0.0f, distance, false);
        place.rotateX(-pitch, false);
        place.rotateY(yaw, false);
        place.translate(target[0], target[1], target[2], false);
    }
};

// Escape and the window's close button stop the loop; arrows and the mouse steer the orbit.
class Controls : public InputProcessor {
public:
    Controls(Orbit& orbit, Transformation& place) : mOrbit(orbit), mPlace(place) {}

    bool processEvent(InputEvent& event) override {
        if (SysWMEventInfo* wm = event.getSysWMEventInfo()) {
            if (wm->getEventType() == SysWMEventInfo::SysWMQuit)
                VelunCore::getSingleton().getProcessManager().stop(false);
            return wm->getEventType() == SysWMEventInfo::SysWMQuit;
        }
        if (KeyEventInfo* key = event.getKeyEventInfo()) {
            if (key->getEventType() != KeyEventInfo::KeyPressed)
                return false;
            switch (key->getKeySymbol()) {
            case KeyEscape:
                VelunCore::getSingleton().getProcessManager().stop(false);
                return true;
            case KeyLeft:
                mOrbit.yaw -= 0.1f;
                break;
            case KeyRight:
                mOrbit.yaw += 0.1f;
                break;
            case KeyUp:
                mOrbit.distance = std::max(5.0f, mOrbit.distance - 1.0f);
                break;
            case KeyDown:
                mOrbit.distance = std::min(40.0f, mOrbit.distance + 1.0f);
                break;
            default:
                return false;
            }
            mOrbit.apply(mPlace);
            return true;
        }
        if (ButtonEventInfo* button = event.getButtonEventInfo()) {
            bool pressed = button->getEventType() == ButtonEventInfo::ButtonPressed;
            if (button->getButtonNr() == 1)
                mDragging = pressed;
            else if (pressed && (button->getButtonNr() == 4 || button->getButtonNr() == 5)) {
                float step = button->getButtonNr() == 4 ? -1.0f : 1.0f;
                mOrbit.distance = std::min(40.0f, std::max(5.0f, mOrbit.distance + step));
                mOrbit.apply(mPlace);
            }
            return true;
        }
        if (MoveEventInfo* move = event.getMoveEventInfo()) {
            if (!mDragging)
                return false;
            mOrbit.yaw -= move->getRelativeX() * 0.01f;
            mOrbit.pitch = std::min(1.4f, std::max(0.05f, mOrbit.pitch + move->getRelativeY() * 0.01f));
            mOrbit.apply(mPlace);
            return true;
        }
        return false;
    }

private:
    Orbit& mOrbit;
    Transformation& mPlace;
    bool mDragging = false;
};

// Runs after the render subsystem in every pass: measures the pass, drives the HUD's
// frame-time meter, takes the screenshots and ends a run of a fixed number of frames.
class FrameMonitor : public Process {
public:
    FrameMonitor(const Options& options, RenderWindow& window, Transformation& meter)
        : mOptions(options), mWindow(window), mMeter(meter),
          mCounter(VelunCore::getSingleton().getTimerManager().createHighresCounter()) {
        if (!options.screenshots.empty() && options.frames > 0)
            for (int i = 1; i <= 3; ++i)
                mShotFrames.push_back(std::max(1, options.frames * i / 3));
    }

    int run(std::int64_t) override {
        if (mFrames == 0) {
            mCounter->start();
        } else {
            mCounter->update();
            double ms = mCounter->getElapsedSeconds() * 1000.0;
            mFrameTimes.push_back(ms);
            // A full bar is 50 ms, a frame at 20 frames per second.
            float fill = static_cast<float>(std::min(1.0, std::max(0.02, ms / 50.0)));
            mMeter.reset();
            mMeter.scale(fill, 1.0f, 1.0f, false);
            mMeter.translate(0.03f, 0.945f, 0.0f, false);
        }
        ++mFrames;
        if (std::find(mShotFrames.begin(), mShotFrames.end(), mFrames) != mShotFrames.end())
            saveScreenshot();
        if (mOptions.frames > 0 && mFrames >= mOptions.frames)
            VelunCore::getSingleton().getProcessManager().stop(false);
        return 0;
    }

    void printStatistics() const {
        std::cout << "frames drawn: " << mFrames << std::endl;
        if (mFrameTimes.empty())
            return;
        std::vector<double> sorted = mFrameTimes;
        std::sort(sorted.begin(), sorted.end());
        double sum = 0.0;
        for (double t : sorted)
            sum += t;
        std::printf("frame time: mean %.2f ms, median %.2f ms, worst %.2f ms\n", sum / sorted.size(),
                    sorted[sorted.size() / 2], sorted.back());
    }

private:
    void saveScreenshot() {
        std::ostringstream name;
        name << mOptions.screenshots << "/showcase-" << ++mShots << ".png";
        if (mWindow.saveScreenshot(name.str()))
            std::cout << "screenshot: " << name.str() << std::endl;
    }

    const Options& mOptions;
    RenderWindow& mWindow;
    Transformation& mMeter;
    SharedPtr<Counter> mCounter;
    std::vector<int> mShotFrames;
    std::vector<double> mFrameTimes;
    int mFrames = 0;
    int mShots = 0;
};

// The application's own subsystem, updated after the engine's five.
class ShowcaseSubsystem : public Subsystem {
public:
    explicit ShowcaseSubsystem(int id) { setSubsystemId(id); }
    std::vector<Process*>* getProcessList() override { return &mProcesses; }
    std::vector<Process*> mProcesses;
};

// Owns the nodes the showcase makes and deletes them last-made first, so that children
// leave their parents before the parents go.
class Nodes {
public:
    ~Nodes() {
        while (!mNodes.empty())
            mNodes.pop_back();
    }
    template <class T>
    T& keep(T* node) {
        mNodes.emplace_back(node);
        return *node;
    }

private:
    std::vector<std::unique_ptr<Node>> mNodes;
};

// A transformation node at (x, y, z) below a scene's root or another transformation.
TransformationNode& place(Nodes& nodes, Branch& parent, float x, float y, float z) {
    TransformationNode& node = nodes.keep(new TransformationNode());
    node.translate(x, y, z, false);
    parent.attachChild(node);
    return node;
}

TransformationNode& place(Nodes& nodes, TransformationNode& parent, float x, float y, float z) {
    TransformationNode& node = nodes.keep(new TransformationNode());
    node.translate(x, y, z, false);
    parent.setChild(node);
    return node;
}

SharedPtr<Material> texturedMaterial(SharedPtr<Texture> texture) {
    SharedPtr<Material> material(new Material());
    material->setTexture(0, texture);
    material->setSpecularMaterialColor(Color(0.1f, 0.1f, 0.1f, 1.0f));
    return material;
}

// Unlit: the colour comes from the material, or from the geometry's vertex colours
// (with their alpha) when it has them.
SharedPtr<Material> unlitMaterial(Color color, bool blended) {
    SharedPtr<Material> material(new Material());
    material->setUseDefaultVertexColor(true);
    material->setDefaultVertexColor(color);
    material->setUseBlending(blended);
    material->setBlendMode(Material::AlphaBlend);
    // The alpha test would drop the faint fragments that blending is for.
    material->setUseAlphaTest(!blended);
    SharedPtr<RenderSettings> unlit(new RenderSettings());
    unlit->setUseLights(false);
    material->setRenderSettings(unlit);
    return material;
}

// An object node with one subobject of `geometry`, drawn with `material`.
GeometryObject& shape(Nodes& nodes, TransformationNode& parent, SharedPtr<Geometry> geometry,
                      SharedPtr<Material> material) {
    GeometryObject& object = nodes.keep(new GeometryObject());
    GeometrySubobject* part = new GeometrySubobject();
    part->setGeometry(geometry, 0);
    object.addSubobject(*part);
    object.setDefaultMaterial(0, material);
    parent.setChild(object);
    return object;
}

Light& light(Nodes& nodes, TransformationNode& parent, Light::LightType type, Color diffuse) {
    Light& light = nodes.keep(new Light());
    light.setLightType(type);
    light.setDiffuseColor(diffuse);
    light.setSpecularColor(diffuse);
    light.setAmbientColor(Color(0.0f, 0.0f, 0.0f, 1.0f));
    parent.setChild(light);
    return light;
}

// The main camera sees the world in fog and shows the HUD; the chase camera sees it clear.
SharedPtr<Camera> camera(TransformationNode& parent, bool overlay) {
    SharedPtr<Camera> camera(new Camera());
    SharedPtr<RenderSettings> settings(new RenderSettings());
    settings->setUseFog(overlay);
    camera->getCamSettings().setRenderSettings(settings);
    camera->getCamSettings().setFovY(55.0f);
    camera->getCamSettings().setNearDistance(0.2);
    camera->getCamSettings().setFarDistance(400.0);
    camera->getCamSettings().setAspectMode(CameraSettings::AspectFovXFromY);
    if (overlay) {
        SharedPtr<RenderSettings> hud(new RenderSettings());
        hud->setUseLights(false);
        camera->getOverlaySettings().setRenderSettings(hud);
        camera->setOverlayZOffset(5.0f);
    }
    parent.setChild(*camera);
    return camera;
}

// Runs a logic element from now on.
template <class T>
SharedPtr<T> start(SharedPtr<T> element) {
    VelunCore::getSingleton().getEventManager().registerModifier(element);
    element->setState(LogicElement::StateRunning);
    return element;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parseOptions(argc, argv, options)) {
        std::cerr << "usage: showcase [--frames N] [--screenshots DIR] [--size WxH] [--assets DIR]"
                  << std::endl;
        return 2;
    }
    std::error_code error;
    if (!options.screenshots.empty())
        options.screenshots = std::filesystem::absolute(options.screenshots).string();
    if (!options.screenshots.empty() && !std::filesystem::create_directories(options.screenshots, error) &&
        error) {
        std::cerr << "cannot create " << options.screenshots << ": " << error.message() << std::endl;
        return 1;
    }
    // The engine finds models and textures below the working directory.
    std::filesystem::current_path(options.assets, error);
    if (error) {
        std::cerr << "cannot enter the asset folder " << options.assets << ": " << error.message()
                  << std::endl;
        return 1;
    }

    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);

    core.getRenderManager().initializeRenderer(false);
    RenderWindow* window = core.getRenderManager().createRenderWindow("Velun showcase", options.width,
                                                                      options.height, false, 0, 0, nullptr);
    if (!window) {
        std::cerr << "no render window could be opened" << std::endl;
        core.shutdown();
        return 1;
    }

    int exitCode = 0;
    {
        Nodes nodes;
        SceneGraph& scene = core.getSceneManager().createSceneGraph();
        Overlay& hud = core.getSceneManager().createOverlay();
        Branch& world = *scene.getRoot();
        ObjectManager& objects = core.getResourceManager().getObjectManager();

        // Ground, sky and crates.
        TransformationNode& ground = place(nodes, world, 0, 0, 0);
        ground.rotateX(-Pi / 2, true);
        shape(nodes, ground, Showcase::makeQuad(-60, -60, 60, 60, 24, 48),
              texturedMaterial(Showcase::makeCheckerTexture(128, 2, Color(0.92f, 0.86f, 0.70f),
                                                            Color(0.45f, 0.38f, 0.30f))));
        TransformationNode& sky = place(nodes, world, 0, 0, 0);
        shape(nodes, sky, Showcase::makeBox(150, 150, 150, true),
              unlitMaterial(Color(0.16f, 0.42f, 0.55f), false));
        SharedPtr<Geometry> crateBox = Showcase::makeBox(0.8f, 0.8f, 0.8f);
        SharedPtr<Material> crate = texturedMaterial(Showcase::makeCrateTexture(128));
        const float crates[][3] = {
            {-6.0f, 0.8f, -3.0f}, {-4.2f, 0.8f, -4.0f}, {-5.1f, 2.4f, -3.5f}, {6.5f, 0.8f, 2.0f}};
        for (const float* c : crates)
            shape(nodes, place(nodes, world, c[0], c[1], c[2]), crateBox, crate);

        // The jeep on its turntable, spinning in place.
        TransformationNode& turntable = place(nodes, world, 0, 0, 0);
        TransformationNode& spin = place(nodes, turntable, 0, 0, 0);
        // The model is measured in its own units; a quarter of them make a jeep four
        // metres long.
        TransformationNode& jeepSize = place(nodes, spin, 0, 0, 0);
        jeepSize.scale(JeepScale, false);
        ObjectNode* jeep = objects.createObject("jeep1.ms3d");
        if (jeep) {
            nodes.keep(jeep);
            jeepSize.setChild(*jeep);
        }
        SharedPtr<VelocityModifier> spinner = start(SharedPtr<VelocityModifier>(new VelocityModifier(spin)));
        spinner->setRotateY(0.6f);

        // A second jeep from the same cached model drives in a circle.
        TransformationNode& track = place(nodes, world, 9, 0, -6);
        TransformationNode& driverSize = place(nodes, track, 0, 0, 0);
        driverSize.scale(JeepScale, false);
        // The model faces -Z; the modifier drives along +Z.
        driverSize.rotateY(Pi, true);
        ObjectNode* driver = objects.createObject("jeep1.ms3d");
        if (driver) {
            nodes.keep(driver);
            driverSize.setChild(*driver);
        }
        SharedPtr<VelocityModifier> drive = start(SharedPtr<VelocityModifier>(new VelocityModifier(track)));
        drive->setTransformGlobal(true);
        drive->setTranslateZ(5.0f);
        drive->setRotateY(0.45f);

        // Two spheres tumbling above the crates.
        TransformationNode& spheres = place(nodes, world, 5.0f, 3.5f, -7.0f);
        TransformationNode& spheresSize = place(nodes, spheres, 0, 0, 0);
        spheresSize.scale(0.015f, false);
        ObjectNode* twoSpheres = objects.createObject("twospheres.ms3d");
        if (twoSpheres) {
            nodes.keep(twoSpheres);
            spheresSize.setChild(*twoSpheres);
        }
        start(SharedPtr<VelocityModifier>(new VelocityModifier(spheres)))->setRotateX(0.8f);

        // A pane of tinted glass between the camera and the jeep.
        TransformationNode& pane = place(nodes, world, 1.0f, 0.0f, 4.0f);
        pane.rotateY(0.35f, true);
        shape(nodes, pane,
              Showcase::makeColoredQuad(-1.6f, 0.0f, 1.6f, 1.6f, Color(0.35f, 0.85f, 1.0f, 0.35f)),
              unlitMaterial(Color(1, 1, 1), true));

        // Lights: a low sun, a warm lamp by the crates and a cool spot on the turntable.
        TransformationNode& sun = place(nodes, world, 0, 0, 0);
        sun.rotateY(0.6f, true);
        sun.rotateX(-0.9f, true);
        light(nodes, sun, Light::Directional, Color(0.85f, 0.82f, 0.72f));
        TransformationNode& lamp = place(nodes, world, -4.0f, 3.0f, -1.0f);
        light(nodes, lamp, Light::PointLight, Color(1.0f, 0.55f, 0.2f)).setLinearAttenuation(0.15f);
        TransformationNode& spotPlace = place(nodes, world, 0.0f, 7.0f, 0.0f);
        spotPlace.rotateX(-Pi / 2, true);
        Light& spot = light(nodes, spotPlace, Light::Spot, Color(0.4f, 0.55f, 1.0f));
        spot.setSpotCutoff(25.0f);
        spot.setSpotExponent(8.0f);

        // The main camera orbits the turntable; the chase camera trails the driving jeep.
        Orbit orbit;
        TransformationNode& eye = place(nodes, world, 0, 0, 0);
        orbit.apply(eye);
        SharedPtr<Camera> mainCamera = camera(eye, true);
        mainCamera->setOverlay(hud);
        TransformationNode& chase = place(nodes, world, 0, 0, 0);
        SharedPtr<Camera> chaseCamera = camera(chase, false);
        SharedPtr<FollowModifier> follow(new FollowModifier());
        follow->setSource(track);
        follow->setFollowerTransformation(chase);
        follow->getOffsetTransformation().translate(0.0f, 2.2f, -6.5f, false);
        follow->getOffsetTransformation().rotateY(Pi, true);
        follow->getOffsetTransformation().rotateX(-0.15f, true);
        follow->setToSource();
        start(follow);

        // The HUD: a dark band across the top with a frame-time meter in it.
        Branch& hudRoot = *hud.getRoot();
        TransformationNode& band = place(nodes, hudRoot, 0, 0, 0);
        shape(nodes, band, Showcase::makeColoredQuad(0.0f, 0.92f, 1.0f, 1.0f, Color(0, 0, 0, 0.55f)),
              unlitMaterial(Color(1, 1, 1), true));
        TransformationNode& meter = place(nodes, hudRoot, 0, 0, 0.1f);
        shape(nodes, meter, Showcase::makeQuad(0.0f, 0.0f, 0.94f, 0.03f),
              unlitMaterial(Color(0.3f, 0.95f, 0.4f), false));

        SharedPtr<RenderTarget> target(new RenderTarget());
        SharedPtr<Viewport> full(new Viewport(0.0f, 0.0f, 1.0f, 1.0f));
        full->attachCamera(mainCamera);
        target->attachViewport(full);
        SharedPtr<Viewport> inset(new Viewport(0.66f, 0.05f, 0.31f, 0.31f));
        inset->attachCamera(chaseCamera);
        target->attachViewport(inset);
        window->attachRenderTarget(target);

        Controls controls(orbit, eye);
        core.getInputManager().registerInputProcessor(controls);

        ProcessManager& processes = core.getProcessManager();
        ShowcaseSubsystem subsystem(processes.createSubsystemId());
        FrameMonitor monitor(options, *window, meter);
        subsystem.mProcesses.push_back(&monitor);
        processes.registerSubsystem(subsystem, -1);

        if (!jeep || !twoSpheres)
            exitCode = 1;
        processes.run(true);
        monitor.printStatistics();

        window->detachRenderTarget();
        core.getInputManager().unregisterInputProcessor(controls);
    }
    core.shutdown();
    return exitCode;
}
