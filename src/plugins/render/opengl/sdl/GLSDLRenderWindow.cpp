#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"

#include <GL/glew.h>
#include <SDL.h>

#include <cassert>
#include <iostream>

#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/GLRenderEngine.h"

namespace Velun {

namespace {

int videoColorDepth() {
    SDL_VideoInfo const* info = SDL_GetVideoInfo();
    if (!info || !info->vfmt)
        return -1;
    return info->vfmt->BitsPerPixel;
}

}  // namespace

GLSDLRenderWindow::GLSDLRenderWindow(GLRenderEngine* engine, int id, std::string const& name, int width,
                                     int height, bool fullscreen, int offsetX, int offsetY,
                                     Dorvan::LinkedMap<std::string, std::string>* options)
    : RenderWindow(id, name, width, height, fullscreen, offsetX, offsetY, options), mColorDepth(-1),
      mDoubleBuffered(true), mEngine(engine), mRenderContext(new GLRenderContext(engine)) {
    mColorDepth = videoColorDepth();
}

GLSDLRenderWindow::~GLSDLRenderWindow() { delete mRenderContext; }

bool GLSDLRenderWindow::create() {
    if (mColorDepth < 0)
        return false;
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 8);
    // 16 bits of depth make distant geometry fight; every current driver offers 24.
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, mDoubleBuffered ? 1 : 0);
    Uint32 flags = SDL_OPENGL;
    if (isFullscreen())
        flags |= SDL_FULLSCREEN;
    if (!SDL_SetVideoMode(getWidth(), getHeight(), mColorDepth, flags))
        return false;
    SDL_WM_SetCaption(getName().c_str(), getName().c_str());
    mRenderContext->makeCurrent();
    GLenum code = glewInit();
    if (code != GLEW_OK) {
        std::cerr << "GLEW Error: " << glewGetErrorString(code) << std::endl;
        mRenderContext->releaseCurrent();
        return false;
    }
    mRenderContext->refreshCapabilities();
    // Image rows are tightly packed, whatever their width.
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glViewport(0, 0, getWidth(), getHeight());
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (mDoubleBuffered)
        SDL_GL_SwapBuffers();
    return true;
}

RenderEngine* GLSDLRenderWindow::getRenderEngine() { return mEngine; }

RenderContext* GLSDLRenderWindow::getRenderContext() {
    assert(mRenderContext);
    return mRenderContext;
}

GLRenderContext* GLSDLRenderWindow::getGLRenderContext() {
    assert(mRenderContext);
    return mRenderContext;
}

void GLSDLRenderWindow::drawTarget() {
    Dorvan::SharedPtr<RenderTarget> target = getRenderTarget();
    if (target) {
        setDrawCallCount(mEngine->renderTarget(target.get(), mRenderContext, getWidth(), getHeight()));
    } else {
        setDrawCallCount(0);
        glViewport(0, 0, getWidth(), getHeight());
        glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
}

void GLSDLRenderWindow::render(std::int64_t) {
    mRenderContext->beginFrame();
    drawTarget();
    if (mDoubleBuffered)
        SDL_GL_SwapBuffers();
    mRenderContext->endFrame();
}

bool GLSDLRenderWindow::canGrabInput() { return true; }

bool GLSDLRenderWindow::isInputGrabbed() { return SDL_WM_GrabInput(SDL_GRAB_QUERY) == SDL_GRAB_ON; }

bool GLSDLRenderWindow::setInputGrabbed(bool on) {
    SDL_GrabMode const mode = on ? SDL_GRAB_ON : SDL_GRAB_OFF;
    return SDL_WM_GrabInput(mode) == mode;
}

bool GLSDLRenderWindow::canControlCursor() { return true; }

bool GLSDLRenderWindow::isCursorVisible() { return SDL_ShowCursor(SDL_QUERY) == 1; }

bool GLSDLRenderWindow::setCursorVisible(bool on) { return SDL_ShowCursor(on ? 1 : 0) == (on ? 1 : 0); }

bool GLSDLRenderWindow::warpCursor(unsigned short x, unsigned short y) {
    SDL_WarpMouse(x, y);
    return true;
}

}  // namespace Velun
