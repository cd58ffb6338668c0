#include "plugins/loader/devil/DevILPlugin.h"

#include "core/ResourceManager.h"
#include "plugins/loader/devil/DevILTextureSourceLoader.h"
#include "texture/TextureManager.h"

namespace Velun {

namespace {

ResourceLoader* attachImageLoader(ResourceManager& resources) {
    DevILTextureSourceLoader* loader = new DevILTextureSourceLoader();
    resources.getTextureManager().registerTextureSourceLoader(*loader);
    return loader;
}

void detachImageLoader(ResourceManager& resources, ResourceLoader& loader) {
    resources.getTextureManager().unregisterTextureSourceLoader(static_cast<TextureSourceLoader&>(loader));
}

}  // namespace

DevILPlugin::DevILPlugin() : LoaderPlugin({&attachImageLoader, &detachImageLoader}) {}

}  // namespace Velun
