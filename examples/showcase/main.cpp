// The Velun showcase: a small world with textured models, several lights, fog, a
// blended pane of glass, a spinning model, a camera that trails a driving jeep in a
// second viewport, and a heads-up display in an overlay.
//
//   showcase [--frames N] [--screenshots DIR] [--size WxH] [--assets DIR]
//
// Escape or closing the window ends it; arrow keys, the mouse (drag) and its wheel
// move the camera. With --frames it stops by itself after N frames; with --screenshots
// it writes PNG pictures of three moments to DIR. At exit it prints frame statistics.
//
// The pieces, each a small example of its own: Scene (building helpers), Valley,
// Vehicle, Hud and Controls.

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <string>

#include "Controls.h"
#include "Hud.h"
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

int runWorld(const Options& options, RenderWindow& window) {
    VelunCore& core = VelunCore::getSingleton();
    Nodes nodes;
    SceneGraph& scene = core.getSceneManager().createSceneGraph();
    Overlay& overlay = core.getSceneManager().createOverlay();
    Branch& root = *scene.getRoot();

    Valley valley(nodes, root);
    Vehicles vehicles(nodes, root);
    Hud hud(nodes, overlay);

    Orbit orbit;
    TransformationNode& eye = place(nodes, root, 0, 0, 0);
    orbit.apply(eye);
    window.attachRenderTarget(layout(camera(eye, &overlay), chaseCamera(nodes, root, *vehicles.track)));

    Steps steps;
    FrameMonitor monitor(options.frames, options.screenshots, window, hud);
    steps.add(monitor);
    core.getProcessManager().registerSubsystem(steps, -1);
    Controls controls(orbit, eye, nullptr);
    core.getInputManager().registerInputProcessor(controls);

    core.getProcessManager().run(true);
    monitor.printStatistics();

    window.detachRenderTarget();
    core.getInputManager().unregisterInputProcessor(controls);
    return vehicles.complete ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parseOptions(argc, argv, options)) {
        std::cerr << "usage: showcase [--frames N] [--screenshots DIR] [--size WxH] [--assets DIR]"
                  << std::endl;
        return 2;
    }
    if (!prepareFolders(options))
        return 1;

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
