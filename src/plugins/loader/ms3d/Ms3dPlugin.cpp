#include "plugins/loader/ms3d/Ms3dPlugin.h"

#include "core/ResourceManager.h"
#include "geometry/ObjectManager.h"
#include "plugins/loader/ms3d/Ms3dObjectLoader.h"

namespace Velun {

namespace {

ResourceLoader* attachModelLoader(ResourceManager& resources) {
    Ms3dObjectLoader* loader = new Ms3dObjectLoader();
    resources.getObjectManager().registerObjectLoader(*loader);
    return loader;
}

void detachModelLoader(ResourceManager& resources, ResourceLoader& loader) {
    resources.getObjectManager().unregisterObjectLoader(static_cast<ObjectLoader&>(loader));
}

}  // namespace

Ms3dPlugin::Ms3dPlugin() : LoaderPlugin({&attachModelLoader, &detachModelLoader}) {}

}  // namespace Velun
