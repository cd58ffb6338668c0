// One whole pass of the main loop with a render engine of the tests' own: the engine's
// subsystems run in their fixed order, and every viewport is drawn from its camera.

#include <gtest/gtest.h>

#include <algorithm>

#include "TestRenderEngine.h"
#include "core/ProcessManager.h"
#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "input/InputManager.h"
#include "input/InputProvider.h"
#include "logic/EventManager.h"
#include "render/RenderManager.h"
#include "scene/BoundingBox.h"
#include "scene/Branch.h"
#include "scene/Light.h"
#include "scene/Overlay.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "sound/SoundManager.h"

using Dorvan::SharedPtr;
using namespace Velun;
using RenderTest::CallLog;

namespace {

CallLog* gLog = nullptr;

void record(std::string const& line) { gLog->push_back(line); }

class InputProbe : public InputProvider {
public:
    bool needsPolling() override { return true; }
    void pollEvents(std::int64_t) override { record("input"); }
};

// A logic modifier, or a sound process, that logs its name when run.
class Probe : public Modifier, public Process {
public:
    explicit Probe(std::string const& name) : mName(name) {}
    int run(std::int64_t) override {
        record(mName);
        return 0;
    }
    std::string mName;
};

// A named box whose update hook shows the scene's update pass.
class Box : public Leaf {
public:
    Box(std::string const& name, float z)
        : Leaf(TypeObject, name), mBox(Point(-1, -1, z - 1), Point(1, 1, z + 1)) {}
    BoundingVolume const* getBoundingVolume() const override { return &mBox; }
    void update(bool entering) override {
        if (entering)
            record("update " + getName());
    }

private:
    BoundingBox mBox;
};

void stopAfterFrame() { VelunCore::getSingleton().getProcessManager().stop(false); }

TEST(FrameTest, OneFrameRunsInputLogicSceneSoundAndRenderInOrder) {
    CallLog log;
    gLog = &log;
    VelunCore::getSingleton().startup();
    RenderTest::TestRenderEngine engine(&log);
    InputProbe input;
    Probe sound("sound");
    VelunCore& core = VelunCore::getSingleton();
    RenderManager& render = core.getRenderManager();
    SceneManager& scenes = core.getSceneManager();

    core.getInputManager().registerInputProvider(input);
    SharedPtr<Probe> logic(new Probe("logic"));
    logic->setState(LogicElement::StateRunning);
    core.getEventManager().registerModifier(logic);
    core.getResourceManager().getSoundManager().getProcessList()->push_back(&sound);

    // A world with a box in front of the cameras and one behind them, and an overlay.
    SceneGraph& world = scenes.createSceneGraph();
    Box ahead("ahead", -10.0f), behind("behind", 10.0f);
    Light lamp("lamp");
    for (Node* node : std::initializer_list<Node*>{&ahead, &behind, &lamp})
        world.getRoot()->attachChild(*node);
    Overlay& hud = scenes.createOverlay();
    Box badge("badge", 0.0f);
    hud.getRoot()->attachChild(badge);

    SharedPtr<Camera> mainCamera(new Camera("main"));
    SharedPtr<Camera> mirror(new Camera("mirror"));
    TransformationNode turn;
    turn.rotateY(3.14159265f, false);
    turn.setChild(*mirror);
    world.getRoot()->attachChild(*mainCamera);
    world.getRoot()->attachChild(turn);
    mainCamera->setOverlay(hud);

    render.registerRenderer("test", &engine);
    EXPECT_EQ(1, render.initializeRenderer(false));
    RenderTest::TestRenderWindow* window = static_cast<RenderTest::TestRenderWindow*>(
        render.createRenderWindow("main", 801, 601, false, 0, 0, nullptr));
    ASSERT_NE(nullptr, window);
    window->mAfterRender = stopAfterFrame;

    // The whole window, inserted at the front; a part given relative to the window, which
    // rounds down; then disabled, empty and cameraless viewports, which are skipped, and a
    // camera outside any scene, which sets its viewport but draws nothing.
    SharedPtr<RenderTarget> target(new RenderTarget());
    auto add = [&target](Viewport* viewport, SharedPtr<Camera> camera, bool enabled = true) {
        viewport->attachCamera(camera);
        viewport->setEnabled(enabled);
        target->attachViewport(SharedPtr<Viewport>(viewport));
    };
    add(new Viewport(0.5f, 0.25f, 0.5f, 0.5f), mirror);
    SharedPtr<Viewport> full(new Viewport(0.0f, 0.0f, 1.0f, 1.0f));
    full->attachCamera(mainCamera);
    EXPECT_EQ(0, target->insertViewport(0, full));
    add(new Viewport(0, 0, 400, 300), mainCamera, false);
    add(new Viewport(0, 0, 0, 300), mainCamera);
    add(new Viewport(0, 0, 400, 300), SharedPtr<Camera>());
    add(new Viewport(1, 2, 30, 40), SharedPtr<Camera>(new Camera("loose")));
    window->attachRenderTarget(target);

    log.clear();
    EXPECT_EQ(0, core.getProcessManager().run(true));

    EXPECT_EQ(
        (CallLog{"input", "logic", "update ahead", "update behind", "update badge", "sound",
                 "render main at 0", "clear surface", "viewport 0 0 801 601", "clear depth",
                 "pass main scene 1 aspect 1.33278: ahead lamp", "clear depth",
                 "overlay pass main scene 2 aspect 1.33278: badge", "viewport 400 150 400 300", "clear depth",
                 "pass mirror scene 1 aspect 1.33333: behind lamp", "viewport 1 2 30 40", "swap"}),
        log);
    // The same frame on a smaller surface: the viewports follow its size.
    log.clear();
    EXPECT_EQ(3, window->renderTarget(*target, 200, 100));
    EXPECT_EQ("viewport 0 0 200 100", log[1]);
    EXPECT_EQ("viewport 100 25 100 50", log[6]);

    world.getRoot()->detachChilds();
    hud.getRoot()->detachChilds();
    turn.detachChild();
    std::vector<Process*>& sounds = *core.getResourceManager().getSoundManager().getProcessList();
    sounds.erase(std::remove(sounds.begin(), sounds.end(), &sound), sounds.end());
    core.shutdown();
    gLog = nullptr;
}

}  // namespace
