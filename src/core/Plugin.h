#pragma once

#include "velun_export.h"

namespace Velun {

// A back end's entry into the engine. `registerPlugin` creates the back end's
// objects and hands them to the managers; `unregisterPlugin` takes them back from
// the managers and destroys them, shutting the back end down. PluginManager calls
// both, at setup and at shutdown.
class VELUN_EXPORT Plugin {
public:
    virtual ~Plugin() {}
    virtual int registerPlugin() = 0;
    virtual int unregisterPlugin() = 0;
};

}  // namespace Velun
