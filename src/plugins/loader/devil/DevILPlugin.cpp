#include "plugins/loader/devil/DevILPlugin.h"

#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "texture/TextureManager.h"

namespace Velun {

DevILPlugin::DevILPlugin() : mLoader(nullptr) {}

DevILPlugin::~DevILPlugin() { unregisterPlugin(); }

int DevILPlugin::registerPlugin() {
    if (mLoader)
        return 0;
    mLoader = new DevILTextureSourceLoader();
    VelunCore::getSingleton().getResourceManager().getTextureManager().registerTextureSourceLoader(*mLoader);
    return 0;
}

int DevILPlugin::unregisterPlugin() {
    if (!mLoader)
        return 0;
    if (ResourceManager* resources = VelunCore::getSingleton().findResourceManager())
        resources->getTextureManager().unregisterTextureSourceLoader(*mLoader);
    mLoader->shutdown();
    delete mLoader;
    mLoader = nullptr;
    return 0;
}

}  // namespace Velun
