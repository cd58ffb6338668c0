#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "render/Capabilities.h"
#include "render/RenderEngine.h"
#include "render/RenderWindow.h"
#include "render/ViewportRenderer.h"
#include "scene/SceneRoot.h"
#include "scene/View.h"

namespace RenderTest {

// What the test engine and its windows were asked to do, in order.
typedef std::vector<std::string> CallLog;

// Collects the names of the nodes a pass hands over, each after a space.
class NameCollector : public Velun::Traverser::Handler {
public:
    void reset(Velun::Node&) override { mNames.clear(); }
    Velun::Traverser::StatusResult handle(Velun::Node& node, Velun::Traverser::Direction direction,
                                          Velun::Node*) override {
        if (direction != Velun::Traverser::DirectionUp && !node.getName().empty())
            mNames += " " + node.getName();
        return Velun::Traverser::ResultContinue;
    }
    std::string mNames;
};

// A window that draws by writing lines into the log: the stand-in for a GL window.
class TestRenderWindow : public Velun::RenderWindow, public Velun::ViewportRenderer {
public:
    TestRenderWindow(Velun::RenderEngine* engine, CallLog* log, int id, std::string const& name, int width,
                     int height)
        : RenderWindow(id, name, width, height, false, 0, 0, nullptr), mEngine(engine), mLog(log) {}
    ~TestRenderWindow() override { mLog->push_back("destroy window " + getName()); }

    Velun::RenderEngine* getRenderEngine() override { return mEngine; }
    // Nothing draws through a context here.
    Velun::RenderContext* getRenderContext() override { return nullptr; }

    void render(std::int64_t timestamp) override {
        mLog->push_back("render " + getName() + " at " + std::to_string(timestamp));
        renderTarget(*getRenderTarget(), getWidth(), getHeight());
        mLog->push_back("swap");
        if (mAfterRender)
            mAfterRender();
    }

    bool canGrabInput() override { return false; }
    bool isInputGrabbed() override { return false; }
    bool setInputGrabbed(bool) override { return false; }
    bool canControlCursor() override { return false; }
    bool isCursorVisible() override { return true; }
    bool setCursorVisible(bool) override { return false; }
    bool warpCursor(unsigned short, unsigned short) override { return false; }

    // Called after each frame, e.g. to stop the main loop.
    void (*mAfterRender)() = nullptr;

protected:
    void clearSurface() override { mLog->push_back("clear surface"); }
    void setViewport(int x, int y, int width, int height) override {
        std::ostringstream line;
        line << "viewport " << x << " " << y << " " << width << " " << height;
        mLog->push_back(line.str());
    }
    void clearDepth() override { mLog->push_back("clear depth"); }
    void renderPass(Velun::Camera& camera, Dorvan::SharedPtr<Velun::View> const& view,
                    bool overlay) override {
        Dorvan::SharedPtr<NameCollector> collector(new NameCollector());
        view->addHandler(collector);
        view->reset(false);
        view->walk(0, false);
        std::ostringstream line;
        line << (overlay ? "overlay pass " : "pass ") << camera.getName() << " scene "
             << view->getSceneRoot().getSceneId() << " aspect " << view->getFrustrum()->getAspect() << ":"
             << collector->mNames;
        mLog->push_back(line.str());
    }

private:
    Velun::RenderEngine* mEngine;
    CallLog* mLog;
};

// A render engine of the tests: makes TestRenderWindows and logs every call.
class TestRenderEngine : public Velun::RenderEngine {
public:
    explicit TestRenderEngine(CallLog* log, std::string const& name = "test") : mLog(log), mName(name) {}

    bool initialize() override {
        mLog->push_back("initialize " + mName);
        return true;
    }
    Velun::RenderWindow* createRenderWindow(int id, std::string const& name, int width, int height, bool, int,
                                            int, Dorvan::LinkedMap<std::string, std::string>*) override {
        return new TestRenderWindow(this, mLog, id, name, width, height);
    }
    Velun::Capabilities* getCapabilities() override { return &mCapabilities; }
    void shutdown() override { mLog->push_back("shutdown " + mName); }

    CallLog* mLog;
    std::string mName;

private:
    struct : Velun::Capabilities {
    } mCapabilities;
};

}  // namespace RenderTest
