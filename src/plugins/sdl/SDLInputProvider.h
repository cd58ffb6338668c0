#pragma once

#include <cstdint>

#include "input/InputProvider.h"
#include "velun_export.h"

union SDL_Event;

namespace Velun {

class InputEvent;

// Turns SDL's event queue into InputEvents: keys (with the typed character), mouse
// motion (position and relative motion), mouse buttons (with the pointer
// position), and the window's quit, expose, resize and focus messages. Each poll
// drains the queue. The queue fills only while SDL's video runs, which is the
// render window's business; this class neither starts nor stops SDL.
class VELUN_EXPORT SDLInputProvider : public InputProvider {
public:
    SDLInputProvider();
    ~SDLInputProvider() override;

    bool needsPolling() override;
    // Sends every queued event, in queue order, all with this timestamp.
    void pollEvents(std::int64_t timestamp) override;

private:
    // False for an SDL event that has no input event (joystick, window-manager
    // messages, mouse focus alone).
    bool translateEvent(InputEvent& event, const SDL_Event& sdlEvent);
    unsigned short translateModifiers(int sdlMod);
};

}  // namespace Velun
