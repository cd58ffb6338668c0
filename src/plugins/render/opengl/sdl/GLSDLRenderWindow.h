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
    ~GLSDLRenderWindow() override;

    // Opens the video mode and starts GLEW; false (and nothing open) on failure. Called
    // once by the engine right after construction.
    bool create();

    RenderEngine* getRenderEngine() override;
    RenderContext* getRenderContext() override;
    GLRenderContext* getGLRenderContext();
    void render(std::int64_t timestamp) override;

    bool canGrabInput() override;
    bool isInputGrabbed() override;
    bool setInputGrabbed(bool on) override;
    bool canControlCursor() override;
    bool isCursorVisible() override;
    // True when the cursor was already in the asked state.
    bool setCursorVisible(bool on) override;
    bool warpCursor(unsigned short x, unsigned short y) override;

    // Draws the attached target once more, unseen, and writes the picture to an image
    // file: PNG, or any type DevIL writes, by the extension. False with an error line.
    bool saveScreenshot(std::string const& fileName) override;
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
