#include "core/LoaderPlugin.h"

#include "core/ResourceLoader.h"
#include "core/ResourceManager.h"
#include "core/VelunCore.h"

namespace Velun {

LoaderPlugin::LoaderPlugin(const LoaderSlot& slot) : mSlot(slot), mLoader(nullptr) {}

LoaderPlugin::~LoaderPlugin() { unregisterPlugin(); }

int LoaderPlugin::registerPlugin() {
    if (!mLoader)
        mLoader = mSlot.attach(VelunCore::getSingleton().getResourceManager());
    return 0;
}

int LoaderPlugin::unregisterPlugin() {
    if (!mLoader)
        return 0;
    if (ResourceManager* resources = VelunCore::getSingleton().findResourceManager())
        mSlot.detach(*resources, *mLoader);
    mLoader->shutdown();
    delete mLoader;
    mLoader = nullptr;
    return 0;
}

}  // namespace Velun
