// The Velun showcase: a valley of textured terrain with a river winding through it, a
// jeep that drives a loop over the ground raising dust, spheres floating down the
// river, a campfire throwing sparks, the engine's and the river's sound, a chase camera
// in a second viewport and a heads-up display.
//
//   showcase [--frames N] [--screenshots DIR] [--size WxH] [--assets DIR]
//            [--sound-wav FILE] [--pick X,Y]
//
// Escape or closing the window ends it; arrow keys, the mouse (drag) and its wheel
// move the camera, and a click reports what lies under the pointer. With --frames it
// stops by itself after N frames, touring three views; with --screenshots it writes
// PNG pictures of three moments to DIR; --sound-wav writes what it played to a WAV file
// instead of the sound card; --pick picks at a pixel once the world is drawn. At exit
// it prints frame statistics.
//
// The pieces, each a small example of its own: Scene (building helpers), Valley
// (terrain, river, camp), Vehicle (jeep, floaters), Effects (particles), Audio (sound),
// Picking, Hud and Controls.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>

#include "Audio.h"
#include "Controls.h"
#include "Effects.h"
#include "Hud.h"
#include "Picking.h"
#include "Scene.h"
#include "Valley.h"
#include "Vehicle.h"

using Dorvan::SharedPtr;
using namespace Velun;
using namespace Showcase;

namespace {

const float Pi = 3.14159265f;

struct Options {
    int frames = 0;  // 0: until the window is closed
    std::string screenshots;
    int width = 800;
    int height = 600;
    std::string assets = VELUN_EXAMPLE_ASSETS;
    std::string soundWav;
    int pickX = -1, pickY = -1;
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
        } else if (arg == "--sound-wav" && hasValue) {
            options.soundWav = argv[++i];
        } else if (arg == "--pick" && hasValue) {
            if (std::sscanf(argv[++i], "%d,%d", &options.pickX, &options.pickY) != 2)
                return false;
        } else {
            return false;
        }
    }
    return options.frames >= 0;
}

// Makes the screenshot folder and enters the asset folder, below which the engine
// finds models and textures.
bool prepareFolders(Options& options) {
    std::error_code error;
    if (!options.screenshots.empty()) {
        options.screenshots = std::filesystem::absolute(options.screenshots).string();
        if (!std::filesystem::create_directories(options.screenshots, error) && error) {
            std::cerr << "cannot create " << options.screenshots << ": " << error.message() << std::endl;
            return false;
        }
    }
    std::filesystem::current_path(options.assets, error);
    if (error) {
        std::cerr << "cannot enter the asset folder " << options.assets << ": " << error.message()
                  << std::endl;
        return false;
    }
    return true;
}

// The main camera sees the world in fog and shows the HUD; the chase camera sees it clear.
SharedPtr<Camera> camera(TransformationNode& parent, Overlay* hud) {
    SharedPtr<Camera> camera(new Camera());
    SharedPtr<RenderSettings> settings(new RenderSettings());
    settings->setUseFog(hud != nullptr);
    camera->getCamSettings().setRenderSettings(settings);
    camera->getCamSettings().setFovY(55.0f);
    camera->getCamSettings().setNearDistance(0.2);
    camera->getCamSettings().setFarDistance(400.0);
    camera->getCamSettings().setAspectMode(CameraSettings::AspectFovXFromY);
    if (hud) {
        SharedPtr<RenderSettings> unlit(new RenderSettings());
        unlit->setUseLights(false);
        camera->getOverlaySettings().setRenderSettings(unlit);
        camera->setOverlayZOffset(5.0f);
        camera->setOverlay(*hud);
    }
    parent.setChild(*camera);
    return camera;
}

// A camera that trails `source` from behind and above.
SharedPtr<Camera> chaseCamera(Nodes& nodes, Branch& root, TransformationNode& source) {
    TransformationNode& chase = place(nodes, root, 0, 0, 0);
    SharedPtr<FollowModifier> follow(new FollowModifier());
    follow->setSource(source);
    follow->setFollowerTransformation(chase);
    follow->getOffsetTransformation().translate(0.0f, 2.2f, -6.5f, false);
    follow->getOffsetTransformation().rotateY(Pi, true);
    follow->getOffsetTransformation().rotateX(-0.15f, true);
    follow->setToSource();
    start(follow);
    return camera(chase, nullptr);
}

// The whole window shows the main camera; an inset in the lower right shows the chase.
SharedPtr<RenderTarget> layout(SharedPtr<Camera> main, SharedPtr<Camera> chase) {
    SharedPtr<RenderTarget> target(new RenderTarget());
    SharedPtr<Viewport> full(new Viewport(0.0f, 0.0f, 1.0f, 1.0f));
    full->attachCamera(main);
    target->attachViewport(full);
    SharedPtr<Viewport> inset(new Viewport(0.66f, 0.05f, 0.31f, 0.31f));
    inset->attachCamera(chase);
    target->attachViewport(inset);
    return target;
}

// Steers the main camera through three views in a run of a fixed number of frames, so
// that the screenshots show the whole valley, the jeep close up and the campfire. The
// eye stays above the ground.
class Tour : public Process {
public:
    Tour(int frames, Orbit& orbit, Transformation& eye, Valley& valley, Jeep& jeep, const Point& campfire)
        : mFrames(frames), mOrbit(orbit), mEye(eye), mValley(valley), mJeep(jeep), mCampfire(campfire) {}

    int run(std::int64_t) override {
        // A run until the window closes leaves the camera to the viewer after the first view.
        if (mFrames == 0 && mFrame++ > 0)
            return 0;
        // The camera set in one pass is drawn in the next, which may take a screenshot:
        // a view changes in the pass after a screenshot frame.
        int phase = mFrames > 0 ? std::min(2, 3 * std::max(0, mFrame++ - 1) / mFrames) : 0;
        if (phase == 0) {
            look(Point(2.0f, 2.0f, 8.0f), 25.0f, 0.85f);
        } else if (phase == 1) {
            const Dorvan::Matrix<float, 4>& jeep = mJeep.getPlace().getLocalTransformation();
            look(Point(jeep(0, 3), jeep(1, 3) + 1.0f, jeep(2, 3)), 9.0f, 0.35f);
        } else {
            look(Point(mCampfire[0], mCampfire[1] + 1.5f, mCampfire[2]), 9.0f, 0.3f);
        }
        return 0;
    }

private:
    void look(const Point& target, float distance, float pitch) {
        mOrbit.target = target;
        mOrbit.distance = distance;
        mOrbit.pitch = pitch;
        for (int i = 0; i < 12 && mValley.getTerrain().getDistance(mOrbit.eye()) < 1.5f; ++i)
            mOrbit.pitch += 0.1f;
        mOrbit.apply(mEye);
    }

    int mFrames;
    int mFrame = 0;
    Orbit& mOrbit;
    Transformation& mEye;
    Valley& mValley;
    Jeep& mJeep;
    Point mCampfire;
};

// Picks at a pixel once, in the second frame, when the world has been drawn: picking
// without a mouse, for headless runs.
class PickOnce : public Process {
public:
    PickOnce(int x, int y, std::function<void(int, int)> pick) : mX(x), mY(y), mPick(std::move(pick)) {}
    int run(std::int64_t) override {
        if (++mFrame == 2)
            mPick(mX, mY);
        return 0;
    }

private:
    int mX, mY;
    std::function<void(int, int)> mPick;
    int mFrame = 0;
};

int runWorld(const Options& options, RenderWindow& window) {
    VelunCore& core = VelunCore::getSingleton();
    Nodes nodes;
    SceneGraph& scene = core.getSceneManager().createSceneGraph();
    Overlay& overlay = core.getSceneManager().createOverlay();
    Branch& root = *scene.getRoot();

    Valley valley(nodes, root);
    // What stands on the ground asks the terrain, whose world placement the update pass sets.
    scene.getUpdateTraverser()->run(0);
    Camp camp(nodes, root, valley);
    Jeep jeep(nodes, root, valley);
    Floaters floaters(nodes, root, valley);
    Effects effects(nodes, root, jeep, camp.getCampfire());
    Hud hud(nodes, overlay);

    Orbit orbit;
    orbit.maxDistance = 60.0f;
    TransformationNode& eye = place(nodes, root, 0, 0, 0);
    Tour tour(options.frames, orbit, eye, valley, jeep, camp.getCampfire());
    tour.run(0);
    SharedPtr<Camera> main = camera(eye, &overlay);
    window.attachRenderTarget(layout(main, chaseCamera(nodes, root, jeep.getPlace())));
    Audio audio(nodes, root, jeep, eye);

    FrameMonitor monitor(options.frames, options.screenshots, window, hud,
                         [&effects] { return effects.getParticleCount(); });
    Picker picker(root, valley, eye, main->getCamSettings(), options.width, options.height);
    picker.label(jeep.getBody(), "jeep");
    picker.label(floaters.getPlace(), "spheres");
    picker.label(camp.getCrates(), "crate");
    auto pick = [&](int x, int y) {
        std::string picked = picker.pick(x, y);
        std::cout << "picked: " << picked << std::endl;
        monitor.setStatus("PICKED " + picked.substr(0, picked.find(" at ")));
    };
    PickOnce pickOnce(options.pickX, options.pickY, pick);

    Steps steps;
    for (Process* step : std::initializer_list<Process*>{&jeep, &floaters, &effects, &tour, &audio, &monitor})
        steps.add(*step);
    if (options.pickX >= 0)
        steps.add(pickOnce);
    core.getProcessManager().registerSubsystem(steps, -1);
    Controls controls(orbit, eye, pick);
    core.getInputManager().registerInputProcessor(controls);

    core.getProcessManager().run(true);
    monitor.printStatistics();

    window.detachRenderTarget();
    core.getInputManager().unregisterInputProcessor(controls);
    return jeep.isLoaded() && floaters.isLoaded() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parseOptions(argc, argv, options)) {
        std::cerr << "usage: showcase [--frames N] [--screenshots DIR] [--size WxH] [--assets DIR]"
                  << std::endl;
        return 2;
    }
    if (!options.soundWav.empty())
        options.soundWav = std::filesystem::absolute(options.soundWav).string();
    if (!prepareFolders(options))
        return 1;
    if (!options.soundWav.empty() && !Audio::writeTo(options.soundWav)) {
        std::cerr << "cannot set up the sound output to " << options.soundWav << std::endl;
        return 1;
    }

    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    core.getRenderManager().initializeRenderer(false);
    RenderWindow* window = core.getRenderManager().createRenderWindow("Velun showcase", options.width,
                                                                      options.height, false, 0, 0, nullptr);
    int exitCode = 1;
    if (window)
        exitCode = runWorld(options, *window);
    else
        std::cerr << "no render window could be opened" << std::endl;
    core.shutdown();
    return exitCode;
}
