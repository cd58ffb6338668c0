#include "plugins/sound/fmod/FmodPlugin.h"

#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "plugins/sound/fmod/FmodSoundEngine.h"
#include "sound/SoundManager.h"

namespace Velun {

FmodPlugin::FmodPlugin() : mEngine(nullptr) {}

FmodPlugin::~FmodPlugin() { unregisterPlugin(); }

int FmodPlugin::registerPlugin() {
    if (mEngine)
        return 0;
    mEngine = new FmodSoundEngine();
    if (!VelunCore::getSingleton().getResourceManager().getSoundManager().registerSoundEngine(*mEngine)) {
        delete mEngine;
        mEngine = nullptr;
    }
    return 0;
}

int FmodPlugin::unregisterPlugin() {
    if (!mEngine)
        return 0;
    if (ResourceManager* resources = VelunCore::getSingleton().findResourceManager())
        resources->getSoundManager().unregisterSoundEngine(*mEngine);
    mEngine->shutdown();
    delete mEngine;
    mEngine = nullptr;
    return 0;
}

}  // namespace Velun
