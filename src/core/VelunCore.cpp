#include "core/VelunCore.h"

#include <cassert>

#include "core/ConfigManager.h"
#include "core/FileNameMapper.h"
#include "core/LogManager.h"
#include "core/PluginManager.h"
#include "core/ProcessManager.h"
#include "core/ResourceManager.h"
#include "core/SimpleLogger.h"
#include "core/TimerManager.h"
#include "geometry/GeometryManager.h"
#include "geometry/ObjectManager.h"
#include "input/InputManager.h"
#include "logic/EventManager.h"
#include "render/RenderManager.h"
#include "scene/SceneManager.h"
#include "sound/SoundManager.h"
#include "texture/TextureManager.h"

namespace Velun {

VelunCore* VelunCore::mSingleton = nullptr;

namespace {
// Deletes a manager and clears its pointer at once, so that code running during the
// rest of shutdown sees it gone.
template <class T>
void destroyManager(T*& manager) {
    delete manager;
    manager = nullptr;
}
}  // namespace

VelunCore& VelunCore::getSingleton() { return Dorvan::Singleton<VelunCore>::getSingleton(); }

VelunCore::VelunCore()
    : mStarted(false), mPluginManager(nullptr), mResourceManager(nullptr), mRenderManager(nullptr),
      mConfigManager(nullptr), mLogManager(nullptr), mInputManager(nullptr), mProcessManager(nullptr),
      mSceneManager(nullptr), mTimerManager(nullptr), mEventManager(nullptr) {
    assert(!VelunCore::mSingleton);
    mSingleton = this;
}

VelunCore::~VelunCore() { mSingleton = nullptr; }

void VelunCore::startup() {
    if (mStarted)
        return;
    mLogManager = new LogManager();
    mConfigManager = new ConfigManager();
    mRenderManager = new RenderManager();
    mPluginManager = new PluginManager();
    mResourceManager = new ResourceManager();
    mProcessManager = new ProcessManager();
    mSceneManager = new SceneManager();
    mInputManager = new InputManager();
    mTimerManager = new TimerManager();
    mEventManager = new EventManager();

    mProcessManager->registerSubsystem(*mInputManager, -1);
    mProcessManager->registerSubsystem(*mEventManager, -1);
    mProcessManager->registerSubsystem(*mSceneManager, -1);
    mProcessManager->registerSubsystem(mResourceManager->getSoundManager(), -1);
    mProcessManager->registerSubsystem(*mRenderManager, -1);
    mStarted = true;
}

bool VelunCore::setup(bool) {
    // Setup needs the managers; before startup there is nothing to set up.
    if (!mStarted)
        return true;
    // Resource directories are relative to the working directory; the mappers only
    // compose paths, so a missing directory shows when a resource is opened.
    const std::string prefix = ".\\";
    Dorvan::SharedPtr<NameMapper> models(new FileNameMapper(prefix + "models"));
    mResourceManager->getGeometryManager().setGeometryNameMapper(models);
    mResourceManager->getObjectManager().setObjectNameMapper(models);
    mResourceManager->getTextureManager().setTextureSourceNameMapper(
        Dorvan::SharedPtr<NameMapper>(new FileNameMapper(prefix + "textures")));
    mResourceManager->getSoundManager().setSoundNameMapper(
        Dorvan::SharedPtr<NameMapper>(new FileNameMapper(prefix + "sound")));
    mPluginManager->loadPlugins("plugins");
    return true;
}

void VelunCore::shutdown() {
    if (!mStarted)
        return;
    mProcessManager->stop(false);
    // Back ends take their objects out of the managers while all managers still exist.
    mPluginManager->unloadPlugins();
    destroyManager(mLogManager);
    destroyManager(mConfigManager);
    destroyManager(mRenderManager);
    destroyManager(mPluginManager);
    destroyManager(mResourceManager);
    destroyManager(mProcessManager);
    destroyManager(mSceneManager);
    destroyManager(mInputManager);
    destroyManager(mTimerManager);
    destroyManager(mEventManager);
    mStarted = false;
}

bool VelunCore::isStarted() { return mStarted; }

PluginManager& VelunCore::getPluginManager() {
    assert(mPluginManager);
    return *mPluginManager;
}

ResourceManager& VelunCore::getResourceManager() {
    assert(mResourceManager);
    return *mResourceManager;
}

RenderManager& VelunCore::getRenderManager() {
    assert(mRenderManager);
    return *mRenderManager;
}

ConfigManager& VelunCore::getConfigManager() {
    assert(mConfigManager);
    return *mConfigManager;
}

InputManager& VelunCore::getInputManager() {
    assert(mInputManager);
    return *mInputManager;
}

ProcessManager& VelunCore::getProcessManager() {
    assert(mProcessManager);
    return *mProcessManager;
}

SceneManager& VelunCore::getSceneManager() {
    assert(mSceneManager);
    return *mSceneManager;
}

TimerManager& VelunCore::getTimerManager() {
    assert(mTimerManager);
    return *mTimerManager;
}

LogManager& VelunCore::getLogManager() {
    assert(mLogManager);
    return *mLogManager;
}

EventManager& VelunCore::getEventManager() {
    assert(mEventManager);
    return *mEventManager;
}

Dorvan::SharedPtr<Dorvan::Logger> VelunCore::getLogger(const std::string& channel) {
    if (mSingleton && mSingleton->mLogManager)
        return mSingleton->mLogManager->getLogger(channel);
    return Dorvan::SharedPtr<Dorvan::Logger>(new SimpleLogger());
}

}  // namespace Velun
