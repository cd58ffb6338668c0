#pragma once

#include <string>

#include "foundation/Logger.h"
#include "foundation/SharedPtr.h"
#include "foundation/Singleton.h"
#include "velun_export.h"

namespace Velun {

class PluginManager;
class ResourceManager;
class RenderManager;
class ConfigManager;
class LogManager;
class InputManager;
class ProcessManager;
class SceneManager;
class TimerManager;
class EventManager;

// The root of the engine: creates, hands out and destroys the ten managers.
// Calling order: getSingleton(), startup(), setup(), the application's set-up,
// getProcessManager().run(true), shutdown(). A getter may only be called between
// startup and shutdown.
class VELUN_EXPORT VelunCore : public Dorvan::Singleton<VelunCore> {
    friend class Dorvan::Singleton<VelunCore>;

public:
    // The one instance, made on the first call. Defined inside the library so that the
    // library and the application share it.
    static VelunCore& getSingleton();

    ~VelunCore() override;

    // Creates the managers and registers the subsystems; a second call does nothing.
    void startup();
    // Installs the file name mappers for "models", "textures" and "sound" below the
    // working directory, and the plug-ins. Looks at no file; always true. The argument
    // has no effect; kept for the interface.
    bool setup(bool);
    // Destroys the managers in the order of their creation. Call it outside the main loop.
    void shutdown();
    bool isStarted();

    PluginManager& getPluginManager();
    ResourceManager& getResourceManager();
    RenderManager& getRenderManager();
    ConfigManager& getConfigManager();
    InputManager& getInputManager();
    ProcessManager& getProcessManager();
    SceneManager& getSceneManager();
    TimerManager& getTimerManager();
    LogManager& getLogManager();
    EventManager& getEventManager();

    // Managers as pointers, null when they do not exist (before startup, after shutdown,
    // or once shutdown has destroyed them). For code that may run after shutdown, such
    // as destructors of resources released at program exit.
    ResourceManager* findResourceManager() const { return mResourceManager; }
    RenderManager* findRenderManager() const { return mRenderManager; }
    InputManager* findInputManager() const { return mInputManager; }
    SceneManager* findSceneManager() const { return mSceneManager; }
    TimerManager* findTimerManager() const { return mTimerManager; }
    EventManager* findEventManager() const { return mEventManager; }

    // The logger of a channel; works at any time: without a LogManager it writes plain
    // lines to standard error.
    static Dorvan::SharedPtr<Dorvan::Logger> getLogger(const std::string& channel);

private:
    VelunCore();

    static VelunCore* mSingleton;

    bool mStarted;
    PluginManager* mPluginManager;
    ResourceManager* mResourceManager;
    RenderManager* mRenderManager;
    ConfigManager* mConfigManager;
    LogManager* mLogManager;
    InputManager* mInputManager;
    ProcessManager* mProcessManager;
    SceneManager* mSceneManager;
    TimerManager* mTimerManager;
    EventManager* mEventManager;
};

}  // namespace Velun
