#include "plugins/loader/ms3d/Ms3dPlugin.h"

#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "geometry/ObjectManager.h"
#include "plugins/loader/ms3d/Ms3dObjectLoader.h"

namespace Velun {

Ms3dPlugin::Ms3dPlugin() : mLoader(nullptr) {}

Ms3dPlugin::~Ms3dPlugin() { unregisterPlugin(); }

int Ms3dPlugin::registerPlugin() {
    if (mLoader)
        return 0;
    mLoader = new Ms3dObjectLoader();
    VelunCore::getSingleton().getResourceManager().getObjectManager().registerObjectLoader(*mLoader);
    return 0;
}

int Ms3dPlugin::unregisterPlugin() {
    if (!mLoader)
        return 0;
    if (ResourceManager* resources = VelunCore::getSingleton().findResourceManager())
        resources->getObjectManager().unregisterObjectLoader(*mLoader);
    mLoader->shutdown();
    delete mLoader;
    mLoader = nullptr;
    return 0;
}

}  // namespace Velun
