#pragma once

#include <string>

#include "velun_export.h"

namespace Velun {

// Creates the compiled-in plug-ins, which hand their back ends to the managers.
class VELUN_EXPORT PluginManager {
public:
    PluginManager();
    virtual ~PluginManager();

    void loadPlugins(const std::string& directory);
};

}  // namespace Velun
