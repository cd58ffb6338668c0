#include "render/RenderManager.h"

#include <set>
#include <sstream>

#include "core/VelunCore.h"
#include "render/RenderEngine.h"
#include "render/RenderWindow.h"

namespace Velun {

RenderManager::RenderAdapter::RenderAdapter(TargetRenderer* renderer) : mRenderer(renderer) {}

RenderManager::RenderAdapter::~RenderAdapter() {}

int RenderManager::RenderAdapter::run(std::int64_t timestamp) {
    mRenderer->render(timestamp);
    return 0;
}

RenderManager::RenderManager() : mInitialized(false), mPrimaryRenderWindow(-1), mLastWindowId(-1) {
    setSubsystemId(6);
}

RenderManager::~RenderManager() {
    for (std::size_t i = 0; i < mProcesses.size(); ++i)
        delete mProcesses[i];
    mProcesses.clear();
    for (std::map<int, RenderWindow*>::iterator it = mRenderWindows.begin(); it != mRenderWindows.end(); ++it)
        delete it->second;
    mRenderWindows.clear();
    // Windows first: they may still need their engine while they close. An engine
    // registered under several names is shut down once.
    std::set<RenderEngine*> done;
    for (std::map<std::string, RenderEngine*>::iterator it = mRenderers.begin(); it != mRenderers.end(); ++it)
        if (done.insert(it->second).second)
            it->second->shutdown();
}

void RenderManager::registerRenderer(const std::string& name, RenderEngine* engine) {
    if (!engine) {
        VelunCore::getLogger("render")->error("RenderManager::registerRenderer: no engine given for '" +
                                              name + "'");
        return;
    }
    mRenderers[name] = engine;
    if (mDefaultRenderer.empty())
        mDefaultRenderer = name;
    if (mInitialized)
        engine->initialize();
}

bool RenderManager::unregisterRenderer(RenderEngine* engine) {
    bool found = false;
    for (std::map<std::string, RenderEngine*>::iterator it = mRenderers.begin(); it != mRenderers.end();) {
        if (it->second == engine) {
            mRenderers.erase(it++);
            found = true;
        } else {
            ++it;
        }
    }
    if (!found)
        return false;
    std::vector<int> windows;
    for (std::map<int, RenderWindow*>::iterator it = mRenderWindows.begin(); it != mRenderWindows.end(); ++it)
        if (it->second->getRenderEngine() == engine)
            windows.push_back(it->first);
    for (std::size_t i = 0; i < windows.size(); ++i)
        destroyRenderWindow(windows[i]);
    if (mRenderers.find(mDefaultRenderer) == mRenderers.end())
        mDefaultRenderer = mRenderers.empty() ? std::string() : mRenderers.begin()->first;
    return true;
}

bool RenderManager::setDefaultRenderer(const std::string& name) {
    if (mRenderers.find(name) == mRenderers.end())
        return false;
    mDefaultRenderer = name;
    return true;
}

int RenderManager::initializeRenderer(bool createDefaultWindow) {
    for (std::map<std::string, RenderEngine*>::iterator it = mRenderers.begin(); it != mRenderers.end(); ++it)
        it->second->initialize();
    if (createDefaultWindow)
        createRenderWindow("default", 800, 600, false, 0, 0, nullptr);
    mInitialized = true;
    return 1;
}

RenderEngine* RenderManager::getDefaultRenderEngine() {
    std::map<std::string, RenderEngine*>::iterator it = mRenderers.find(mDefaultRenderer);
    return it == mRenderers.end() ? 0 : it->second;
}

RenderWindow* RenderManager::createRenderWindow(const std::string& name, int width, int height,
                                                bool fullscreen, int offsetX, int offsetY,
                                                Dorvan::LinkedMap<std::string, std::string>* options) {
    RenderEngine* engine = getDefaultRenderEngine();
    if (!engine)
        return nullptr;
    if (width <= 0 || height <= 0) {
        std::ostringstream text;
        text << "RenderManager::createRenderWindow: window '" << name << "' needs a positive size, not "
             << width << "x" << height;
        VelunCore::getLogger("render")->error(text.str());
        return nullptr;
    }
    // Ids come from a counter, so a destroyed window's id never names a live one.
    int id = mLastWindowId + 1;
    RenderWindow* window =
        engine->createRenderWindow(id, name, width, height, fullscreen, offsetX, offsetY, options);
    if (!window)
        return nullptr;
    mLastWindowId = id;
    mRenderWindows[id] = window;
    if (mPrimaryRenderWindow == -1)
        mPrimaryRenderWindow = id;
    mProcesses.push_back(new RenderAdapter(window));
    return window;
}

bool RenderManager::destroyRenderWindow(int id) {
    std::map<int, RenderWindow*>::iterator found = mRenderWindows.find(id);
    if (found == mRenderWindows.end())
        return false;
    RenderWindow* window = found->second;
    mRenderWindows.erase(found);
    for (std::vector<Process*>::iterator it = mProcesses.begin(); it != mProcesses.end(); ++it) {
        RenderAdapter* adapter = static_cast<RenderAdapter*>(*it);
        if (adapter->getRenderer() == window) {
            delete adapter;
            mProcesses.erase(it);
            break;
        }
    }
    delete window;
    return true;
}

RenderWindow* RenderManager::getPrimaryRenderWindow() { return getRenderWindow(mPrimaryRenderWindow); }

int RenderManager::setPrimaryRenderWindow(int id) {
    if (mRenderWindows.find(id) != mRenderWindows.end())
        mPrimaryRenderWindow = id;
    return mPrimaryRenderWindow;
}

RenderWindow* RenderManager::getRenderWindow(int id) {
    std::map<int, RenderWindow*>::iterator it = mRenderWindows.find(id);
    return it == mRenderWindows.end() ? 0 : it->second;
}

RenderWindow* RenderManager::getRenderWindowByName(const std::string& name) {
    for (std::map<int, RenderWindow*>::iterator it = mRenderWindows.begin(); it != mRenderWindows.end(); ++it)
        if (it->second->getName() == name)
            return it->second;
    return nullptr;
}

unsigned int RenderManager::getRenderWindowCount() {
    return static_cast<unsigned int>(mRenderWindows.size());
}

Dorvan::Vector<std::string>* RenderManager::getRendererNames() {
    mRendererNames.clear();
    for (std::map<std::string, RenderEngine*>::iterator it = mRenderers.begin(); it != mRenderers.end(); ++it)
        mRendererNames.add(it->first);
    return &mRendererNames;
}

std::vector<Process*>* RenderManager::getProcessList() { return &mProcesses; }

}  // namespace Velun
