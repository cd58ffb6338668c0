#pragma once

#include <cstdint>
#include <string>

#include "foundation/LinkedMap.h"
#include "render/RenderWindow.h"
#include "velun_export.h"

namespace Velun {

class GLRenderContext;
class GLRenderEngine;

// The GL engine's window: SDL's video surface with an OpenGL context (24-bit depth,
// double buffered). Each frame it draws its attached render target, or clears to black
// without one, and swaps. It also grabs input, shows and hides the cursor and warps
// the pointer. SDL has one video surface per process, so in practice there is one such
// window at a time; its size is fixed for its life.
class VELUN_EXPORT GLSDLRenderWindow : public RenderWindow {
public:
    // The options are not read.
    GLSDLRenderWindow(GLRenderEngine* engine, int id, std::string const& name, int width, int height,
                      bool fullscreen, int offsetX, int offsetY,
                      Dorvan::LinkedMap<std::string, std::string>* options);
    // Deletes the context and with it the GL objects it holds.
    virtual ~GLSDLRenderWindow();

    // Opens the video mode and starts GLEW; false (and nothing open) on failure. Called
    // once by the engine right after construction.
    bool create();

    virtual RenderEngine* getRenderEngine();
    virtual RenderContext* getRenderContext();
    GLRenderContext* getGLRenderContext();
    virtual void render(std::int64_t timestamp);

    virtual bool canGrabInput();
    virtual bool isInputGrabbed();
    virtual bool setInputGrabbed(bool on);
    virtual bool canControlCursor();
    virtual bool isCursorVisible();
    // True when the cursor was already in the asked state.
    virtual bool setCursorVisible(bool on);
    virtual bool warpCursor(unsigned short x, unsigned short y);

    // Draws the attached target once more, unseen, and writes the picture to an image
    // file: PNG, or any type DevIL writes, by the extension. False with an error line.
    virtual bool saveScreenshot(std::string const& fileName);
    bool isDoubleBuffered() const { return mDoubleBuffered; }
    int getColorDepth() const { return mColorDepth; }

    GLSDLRenderWindow(GLSDLRenderWindow const&) = delete;
    GLSDLRenderWindow& operator=(GLSDLRenderWindow const&) = delete;

private:
    // Draws the attached target, or clears to black without one; no swap.
    void drawTarget();
    int mColorDepth;
    bool mDoubleBuffered;
    GLRenderEngine* mEngine;
    GLRenderContext* mRenderContext;
};

}  // namespace Velun
