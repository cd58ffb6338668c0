#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/Process.h"
#include "core/Subsystem.h"
#include "foundation/LinkedMap.h"
#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

class RenderEngine;
class RenderWindow;
class TargetRenderer;

// Keeps the render engines by name and the windows made by the default engine, and
// draws every window once per pass of the main loop.
//
// Engines belong to whoever registered them; windows and their adapters belong to the
// manager. When the manager ends it deletes its windows and shuts every engine down.
class VELUN_EXPORT RenderManager : public Subsystem {
public:
    // Draws one window or other surface per pass.
    class VELUN_EXPORT RenderAdapter : public Process {
    public:
        explicit RenderAdapter(TargetRenderer* renderer);
        int run(std::int64_t timestamp) override;
        ~RenderAdapter() override;
        TargetRenderer* getRenderer() const { return mRenderer; }

    private:
        TargetRenderer* mRenderer;
    };

    RenderManager();
    ~RenderManager() override;

    // A second registration under one name replaces the first. The first engine
    // registered becomes the default; once initialized, a late engine is initialized at once.
    void registerRenderer(const std::string& name, RenderEngine* engine);
    // Removes every name of the engine and deletes the windows it made, without shutting
    // it down: for an owner that ends its engine before the manager. If the engine was the
    // default, the first remaining name in name order becomes the default. False if the
    // engine is not registered.
    bool unregisterRenderer(RenderEngine* engine);
    // False, and the default stays, if no engine is registered under `name`.
    bool setDefaultRenderer(const std::string& name);
    // Initializes every engine in name order and, if asked, makes an 800x600 window
    // "default" through the default engine. Always 1.
    int initializeRenderer(bool createDefaultWindow);
    bool isInitialized() const { return mInitialized; }

    // A new window of the default engine, with the next window id, drawn once per pass
    // from now on. Null without a default engine or when the engine fails.
    RenderWindow* createRenderWindow(const std::string& name, int width, int height, bool fullscreen,
                                     int offsetX, int offsetY,
                                     Dorvan::LinkedMap<std::string, std::string>* options);
    // Deletes the window and its adapter; false for an unknown id.
    bool destroyRenderWindow(int id);

    // The first window ever made, null once it is destroyed (unless another was made primary).
    RenderWindow* getPrimaryRenderWindow();
    // Makes the window with this id primary if it exists; returns the primary id after the call.
    int setPrimaryRenderWindow(int id);
    RenderWindow* getRenderWindow(int id);
    // The first window, by id, with this name; null if there is none.
    RenderWindow* getRenderWindowByName(const std::string& name);
    unsigned int getRenderWindowCount();
    // Names of the registered engines, in name order; owned by the manager.
    Dorvan::Vector<std::string>* getRendererNames();

    std::vector<Process*>* getProcessList() override;

private:
    RenderEngine* getDefaultRenderEngine();

    bool mInitialized;
    std::string mDefaultRenderer;
    int mPrimaryRenderWindow;
    int mLastWindowId;
    std::map<std::string, RenderEngine*> mRenderers;
    std::map<int, RenderWindow*> mRenderWindows;
    std::vector<Process*> mProcesses;
    Dorvan::Vector<std::string> mRendererNames;
};

}  // namespace Velun
