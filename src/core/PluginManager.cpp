#include "core/PluginManager.h"

#include "core/Plugin.h"
#include "plugins/loader/devil/DevILPlugin.h"
#include "plugins/loader/ms3d/Ms3dPlugin.h"
#include "plugins/render/opengl/GLRenderPlugin.h"
#include "plugins/sdl/SDLPlugin.h"
#include "plugins/sound/fmod/FmodPlugin.h"

namespace Velun {

namespace {

template <class T>
Plugin* createPlugin() {
    return new T();
}

// The plug-ins built into the engine, in load order: GLRenderPlugin, SDLPlugin,
// DevILPlugin, Ms3dPlugin, FmodPlugin. A back end joins by adding its line at its
// place in this order (and the include of its header above); nothing else changes.
// The render engine comes first because the first renderer registered becomes the
// default one.
Plugin* (*const kPluginFactories[])() = {
    &createPlugin<GLRenderPlugin>, &createPlugin<SDLPlugin>,  &createPlugin<DevILPlugin>,
    &createPlugin<Ms3dPlugin>,     &createPlugin<FmodPlugin>,
};

}  // namespace

PluginManager::PluginManager() {}

PluginManager::~PluginManager() { unloadPlugins(); }

void PluginManager::loadPlugins(const std::string&) {
    for (Plugin* (*create)() : kPluginFactories) {
        Plugin* plugin = create();
        // A back end that cannot work says so itself, later, on its own channel.
        plugin->registerPlugin();
        mPlugins.push_back(plugin);
    }
}

void PluginManager::unloadPlugins() {
    while (!mPlugins.empty()) {
        Plugin* plugin = mPlugins.back();
        mPlugins.pop_back();
        plugin->unregisterPlugin();
        delete plugin;
    }
}

unsigned int PluginManager::getPluginCount() const { return static_cast<unsigned int>(mPlugins.size()); }

Plugin* PluginManager::getPlugin(unsigned int position) const { return mPlugins[position]; }

}  // namespace Velun
