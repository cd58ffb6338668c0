#include "plugins/render/opengl/GLRenderEngine.h"

#include <GL/glew.h>
#include <SDL.h>

#include "plugins/render/opengl/GLCapabilities.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/GLViewportRenderer.h"
#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"
#include "render/RenderTarget.h"

namespace Velun {

// Starts and stops SDL's video with the GL library; holds no state.
class SDLVideoBinding {
public:
    bool start() {
        if (SDL_InitSubSystem(SDL_INIT_VIDEO) < 0)
            return false;
        return SDL_GL_LoadLibrary(nullptr) >= 0;
    }
    // Only video: the timer and other parts of SDL belong to other back ends.
    void stop() { SDL_QuitSubSystem(SDL_INIT_VIDEO); }
};

GLRenderEngine::GLRenderEngine()
    : mVideoBinding(new SDLVideoBinding()), mCapabilities(new GLCapabilities()), mInitialized(false) {}

GLRenderEngine::~GLRenderEngine() {
    shutdown();
    delete mCapabilities;
    delete mVideoBinding;
}

bool GLRenderEngine::initialize() {
    if (mInitialized)
        return true;
    mInitialized = mVideoBinding->start();
    return mInitialized;
}

RenderWindow* GLRenderEngine::createRenderWindow(int id, std::string const& name, int width, int height,
                                                 bool fullscreen, int offsetX, int offsetY,
                                                 Dorvan::LinkedMap<std::string, std::string>* options) {
    GLSDLRenderWindow* window =
        new GLSDLRenderWindow(this, id, name, width, height, fullscreen, offsetX, offsetY, options);
    if (!window->create()) {
        delete window;
        return nullptr;
    }
    return window;
}

Capabilities* GLRenderEngine::getCapabilities() { return mCapabilities; }

void GLRenderEngine::shutdown() {
    if (!mInitialized)
        return;
    GLRenderContext::contextEnded();
    mVideoBinding->stop();
    mInitialized = false;
}

unsigned int GLRenderEngine::renderTarget(RenderTarget* target, GLRenderContext* context, int width,
                                          int height) {
    GLViewportRenderer renderer(context);
    if (target)
        renderer.renderTarget(*target, width, height);
    glFlush();
    return renderer.getDrawCallCount();
}

}  // namespace Velun
