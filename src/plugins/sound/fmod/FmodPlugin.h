#pragma once

#include "core/Plugin.h"

namespace Velun {

class FmodSoundEngine;

// The sound back end: registers an FmodSoundEngine with the SoundManager. Where no
// sound device opens, the engine logs one error line and is dropped, and the game
// runs without sound. At unregistration the engine is taken out of the manager,
// shut down and deleted.
class FmodPlugin : public Plugin {
public:
    FmodPlugin();
    ~FmodPlugin() override;

    // Returns 0.
    int registerPlugin() override;
    // Returns 0.
    int unregisterPlugin() override;

private:
    FmodPlugin(const FmodPlugin&) = delete;
    FmodPlugin& operator=(const FmodPlugin&) = delete;

    FmodSoundEngine* mEngine;
};

}  // namespace Velun
