#pragma once

#include "core/Plugin.h"
#include "velun_export.h"

namespace Velun {

class DevILTextureSourceLoader;

// The DevIL back end for images: registers a DevILTextureSourceLoader with the
// TextureManager, and at unregistration takes it back, shuts DevIL down and deletes it.
class VELUN_EXPORT DevILPlugin : public Plugin {
public:
    DevILPlugin();
    // Unregisters first if still registered.
    ~DevILPlugin() override;

    // Returns 0; a second call while registered changes nothing.
    int registerPlugin() override;
    // Returns 0.
    int unregisterPlugin() override;

    DevILPlugin(const DevILPlugin&) = delete;
    DevILPlugin& operator=(const DevILPlugin&) = delete;

private:
    DevILTextureSourceLoader* mLoader;
};

}  // namespace Velun
