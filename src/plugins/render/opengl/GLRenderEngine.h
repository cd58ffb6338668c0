#pragma once

#include <string>

#include "foundation/LinkedMap.h"
#include "render/RenderEngine.h"
#include "velun_export.h"

namespace Velun {

class GLCapabilities;
class GLRenderContext;
class RenderTarget;
class SDLVideoBinding;

// The OpenGL render engine, registered as "opengl": starts SDL video, opens
// GLSDLRenderWindows and draws render targets into them.
class VELUN_EXPORT GLRenderEngine : public RenderEngine {
public:
    GLRenderEngine();
    // Shuts SDL video down if it still runs.
    ~GLRenderEngine() override;

    // Starts SDL video and loads the GL library; true on success.
    bool initialize() override;
    // A window with an open GL context, or null when SDL cannot give one.
    RenderWindow* createRenderWindow(int id, std::string const& name, int width, int height, bool fullscreen,
                                     int offsetX, int offsetY,
                                     Dorvan::LinkedMap<std::string, std::string>* options) override;
    Capabilities* getCapabilities() override;
    // Stops SDL video; the GL objects of live windows are given up, not deleted.
    void shutdown() override;

    bool isInitialized() const { return mInitialized; }

    // Draws every viewport of the target into the current window of `context`.
    // Returns the draw calls issued.
    unsigned int renderTarget(RenderTarget* target, GLRenderContext* context, int width, int height);

    GLRenderEngine(GLRenderEngine const&) = delete;
    GLRenderEngine& operator=(GLRenderEngine const&) = delete;

private:
    SDLVideoBinding* mVideoBinding;
    GLCapabilities* mCapabilities;
    bool mInitialized;
};

}  // namespace Velun
