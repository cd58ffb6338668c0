#pragma once

#include "core/Plugin.h"
#include "velun_export.h"

namespace Velun {

class GLRenderEngine;

// The OpenGL back end: registers a GLRenderEngine with the RenderManager under the
// name "opengl", and at unregistration shuts it down and deletes it.
class VELUN_EXPORT GLRenderPlugin : public Plugin {
public:
    GLRenderPlugin();
    // Unregisters first if still registered.
    ~GLRenderPlugin() override;

    // Returns 0; a second call while registered changes nothing.
    int registerPlugin() override;
    // Returns 1.
    int unregisterPlugin() override;

    // The engine while registered, else null.
    GLRenderEngine* getRenderEngine() const { return mEngine; }

    GLRenderPlugin(GLRenderPlugin const&) = delete;
    GLRenderPlugin& operator=(GLRenderPlugin const&) = delete;

private:
    GLRenderEngine* mEngine;
};

}  // namespace Velun
