#pragma once

#include <string>
#include <vector>

#include "velun_export.h"

namespace Velun {

class Plugin;

// Creates the back-end plug-ins compiled into the engine, in their fixed order,
// and at shutdown takes them down again in reverse order.
class VELUN_EXPORT PluginManager {
public:
    PluginManager();
    // Unloads whatever is still loaded.
    virtual ~PluginManager();

    // Creates and registers every plug-in of the fixed set. No directory is read:
    // `directory` names where plug-ins would come from if they were loaded at run
    // time, and has no effect.
    void loadPlugins(const std::string& directory);

    // Unregisters and deletes the plug-ins, last loaded first, so that each back end
    // takes its objects out of the managers and shuts down while they still exist.
    void unloadPlugins();

    unsigned int getPluginCount() const;
    // Plug-in at this position in load order; the position is not checked.
    Plugin* getPlugin(unsigned int position) const;

private:
    PluginManager(const PluginManager&) = delete;
    PluginManager& operator=(const PluginManager&) = delete;

    std::vector<Plugin*> mPlugins;
};

}  // namespace Velun
