#pragma once

#include <string>

#include "foundation/LinkedMap.h"
#include "velun_export.h"

namespace Velun {

class Capabilities;
class RenderWindow;

// A graphics back end, registered by name with the RenderManager. The engine belongs
// to whoever made it (its plug-in); the manager only calls it.
class VELUN_EXPORT RenderEngine {
public:
    virtual ~RenderEngine() {}

    // Prepares the graphics system; called by RenderManager::initializeRenderer, or at
    // registration when the manager is initialized already.
    virtual bool initialize() = 0;
    // Makes and opens a window with this id; null on failure. The manager owns the
    // window from then on and deletes it.
    virtual RenderWindow* createRenderWindow(int id, const std::string& name, int width, int height,
                                             bool fullscreen, int offsetX, int offsetY,
                                             Dorvan::LinkedMap<std::string, std::string>* options) = 0;
    virtual Capabilities* getCapabilities() = 0;
    // Takes the graphics system down. The manager calls it once when it ends, after its
    // windows are deleted, also for an engine that was never initialized.
    virtual void shutdown() = 0;
};

}  // namespace Velun
