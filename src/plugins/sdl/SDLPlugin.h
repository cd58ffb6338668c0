#pragma once

#include "core/Plugin.h"
#include "velun_export.h"

namespace Velun {

class SDLInputProvider;
class SDLTimer;

// The SDL back end for input and time: registers an SDLInputProvider with the
// InputManager and an SDLTimer with the TimerManager, and at unregistration takes
// both back, shuts the timer down and deletes them.
class VELUN_EXPORT SDLPlugin : public Plugin {
public:
    SDLPlugin();
    // Unregisters first if still registered.
    ~SDLPlugin() override;

    // Returns 0; a second call while registered changes nothing.
    int registerPlugin() override;
    // Returns 0.
    int unregisterPlugin() override;

private:
    SDLPlugin(const SDLPlugin&) = delete;
    SDLPlugin& operator=(const SDLPlugin&) = delete;

    SDLInputProvider* mInputProvider;
    SDLTimer* mTimer;
};

}  // namespace Velun
