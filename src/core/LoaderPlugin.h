#pragma once

#include "core/Plugin.h"
#include "velun_export.h"

namespace Velun {

class ResourceLoader;
class ResourceManager;

// A back end whose whole job is one loader: registering makes the loader and hands it to
// its manager; unregistering (also at destruction) takes it back, shuts it down and
// deletes it. A back end says which loader and which manager through its LoaderSlot.
class VELUN_EXPORT LoaderPlugin : public Plugin {
public:
    // Unregisters first if still registered.
    ~LoaderPlugin() override;

    // Returns 0; a second call while registered changes nothing.
    int registerPlugin() override;
    // Returns 0.
    int unregisterPlugin() override;

    LoaderPlugin(const LoaderPlugin&) = delete;
    LoaderPlugin& operator=(const LoaderPlugin&) = delete;

protected:
    // Plain functions rather than virtual ones, because the destructor unregisters.
    struct LoaderSlot {
        // Makes the loader and registers it with its manager.
        ResourceLoader* (*attach)(ResourceManager& resources);
        // Takes the loader back from its manager.
        void (*detach)(ResourceManager& resources, ResourceLoader& loader);
    };

    explicit LoaderPlugin(const LoaderSlot& slot);

private:
    LoaderSlot mSlot;
    ResourceLoader* mLoader;
};

}  // namespace Velun
