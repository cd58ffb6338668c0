#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "render/Capabilities.h"
#include "render/RenderContext.h"
#include "render/RenderEngine.h"
#include "render/RenderWindow.h"
#include "render/ViewportRenderer.h"
#include "scene/Camera.h"
#include "scene/SceneRoot.h"
#include "scene/View.h"

namespace RenderTest {

// What the test engine and its windows were asked to do, in order.
typedef std::vector<std::string> CallLog;

class TestCapabilities : public Velun::Capabilities {};

// Collects the names of the nodes a pass hands over.
class NameCollector : public Velun::Traverser::Handler {
public:
    void reset(Velun::Node&) override { mNames.clear(); }
    Velun::Traverser::StatusResult handle(Velun::Node& node, Velun::Traverser::Direction direction,
                                          Velun::Node*) override {
        if (direction != Velun::Traverser::DirectionUp && !node.getName().empty())
            mNames.push_back(node.getName());
        return Velun::Traverser::ResultContinue;
    }
    std::vector<std::string> mNames;
};

class TestRenderContext : public Velun::RenderContext {
public:
    explicit TestRenderContext(Velun::RenderEngine* engine) : mEngine(engine) {}
    Velun::RenderEngine* getRenderEngine() override { return mEngine; }
    void beginFrame() override {}
    void endFrame() override {}

private:
    Velun::RenderEngine* mEngine;
};

// A render engine of the tests: makes TestRenderWindows and logs every call.
class TestRenderEngine : public Velun::RenderEngine {
public:
    explicit TestRenderEngine(CallLog* log, std::string const& name = "test")
        : mLog(log), mName(name), mFailWindows(false), mInitializeCount(0), mShutdownCount(0) {}

    bool initialize() override {
        ++mInitializeCount;
        record("initialize " + mName);
        return true;
    }
    Velun::RenderWindow* createRenderWindow(int id, std::string const& name, int width, int height,
                                            bool fullscreen, int offsetX, int offsetY,
                                            Dorvan::LinkedMap<std::string, std::string>*) override;
    Velun::Capabilities* getCapabilities() override { return &mCapabilities; }
    void shutdown() override {
        ++mShutdownCount;
        record("shutdown " + mName);
    }

    CallLog* mLog;
    std::string mName;
    bool mFailWindows;
    int mInitializeCount;
    int mShutdownCount;

private:
    void record(std::string const& line) {
        if (mLog)
            mLog->push_back(line);
    }

    TestCapabilities mCapabilities;
};

// A window that draws by writing lines into the log: the stand-in for a GL window.
class TestRenderWindow : public Velun::RenderWindow, public Velun::ViewportRenderer {
public:
    TestRenderWindow(TestRenderEngine* engine, CallLog* log, int id, std::string const& name, int width,
                     int height, bool fullscreen, int offsetX, int offsetY)
        : RenderWindow(id, name, width, height, fullscreen, offsetX, offsetY, nullptr), mEngine(engine),
          mContext(engine), mLog(log), mGrabbed(false), mCursorVisible(true), mAfterRender(nullptr) {}
    ~TestRenderWindow() override { record("destroy window " + getName()); }

    Velun::RenderEngine* getRenderEngine() override { return mEngine; }
    Velun::RenderContext* getRenderContext() override { return &mContext; }

    void render(std::int64_t timestamp) override {
        std::ostringstream line;
        line << "render " << getName() << " at " << timestamp;
        record(line.str());
        Dorvan::SharedPtr<Velun::RenderTarget> target = getRenderTarget();
        if (target.isNull())
            record("clear surface");
        else
            renderTarget(*target, getWidth(), getHeight());
        record("swap");
        if (mAfterRender)
            mAfterRender();
    }

    bool canGrabInput() override { return true; }
    bool isInputGrabbed() override { return mGrabbed; }
    bool setInputGrabbed(bool grabbed) override {
        mGrabbed = grabbed;
        return true;
    }
    bool canControlCursor() override { return true; }
    bool isCursorVisible() override { return mCursorVisible; }
    bool setCursorVisible(bool visible) override {
        mCursorVisible = visible;
        return true;
    }
    bool warpCursor(unsigned short, unsigned short) override { return true; }

protected:
    void clearSurface() override { record("clear surface"); }
    void setViewport(int x, int y, int width, int height) override {
        std::ostringstream line;
        line << "viewport " << x << " " << y << " " << width << " " << height;
        record(line.str());
    }
    void clearDepth() override { record("clear depth"); }
    void renderPass(Velun::Camera& camera, Dorvan::SharedPtr<Velun::View> const& view,
                    bool overlay) override {
        Dorvan::SharedPtr<NameCollector> collector(new NameCollector());
        view->addHandler(collector);
        view->reset(false);
        view->walk(0, false);
        std::ostringstream line;
        line << (overlay ? "overlay pass " : "pass ") << camera.getName() << " scene "
             << view->getSceneRoot().getSceneId() << " aspect " << view->getFrustrum()->getAspect() << ":";
        for (std::size_t i = 0; i < collector->mNames.size(); ++i)
            line << " " << collector->mNames[i];
        record(line.str());
    }

private:
    void record(std::string const& line) {
        if (mLog)
            mLog->push_back(line);
    }

    TestRenderEngine* mEngine;
    TestRenderContext mContext;
    CallLog* mLog;
    bool mGrabbed;
    bool mCursorVisible;

public:
    // Called after each frame, e.g. to stop the main loop.
    void (*mAfterRender)();
};

inline Velun::RenderWindow*
TestRenderEngine::createRenderWindow(int id, std::string const& name, int width, int height, bool fullscreen,
                                     int offsetX, int offsetY, Dorvan::LinkedMap<std::string, std::string>*) {
    std::ostringstream line;
    line << "create window " << id << " " << name << " " << width << "x" << height << " on " << mName;
    record(line.str());
    if (mFailWindows)
        return nullptr;
    return new TestRenderWindow(this, mLog, id, name, width, height, fullscreen, offsetX, offsetY);
}

}  // namespace RenderTest
