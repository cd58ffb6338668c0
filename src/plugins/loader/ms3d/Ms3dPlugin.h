#pragma once

#include "core/Plugin.h"
#include "velun_export.h"

namespace Velun {

class Ms3dObjectLoader;

// The MS3D model back end: registers an Ms3dObjectLoader with the ObjectManager, and at
// unregistration takes it back and deletes it.
class VELUN_EXPORT Ms3dPlugin : public Plugin {
public:
    Ms3dPlugin();
    // Unregisters first if still registered.
    ~Ms3dPlugin() override;

    // Returns 0; a second call while registered changes nothing.
    int registerPlugin() override;
    // Returns 0.
    int unregisterPlugin() override;

    Ms3dPlugin(const Ms3dPlugin&) = delete;
    Ms3dPlugin& operator=(const Ms3dPlugin&) = delete;

private:
    Ms3dObjectLoader* mLoader;
};

}  // namespace Velun
