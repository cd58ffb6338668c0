#pragma once

#include <string>

#include "foundation/LinkedMap.h"
#include "render/TargetRenderer.h"
#include "velun_export.h"

namespace Velun {

// A window on the desktop that draws its RenderTarget once per frame. Made by a
// RenderEngine through RenderManager::createRenderWindow, which owns it. The back end
// gives the input grab and cursor operations their meaning.
class VELUN_EXPORT RenderWindow : public TargetRenderer {
public:
    ~RenderWindow() override;

    // Nothing sets this flag: the RenderManager keeps the primary window's id itself.
    virtual bool isPrimary();
    virtual bool isFullscreen();
    // Position on the desktop, as asked for at creation.
    virtual int getOffsetX();
    virtual int getOffsetY();

    virtual bool canGrabInput() = 0;
    virtual bool isInputGrabbed() = 0;
    virtual bool setInputGrabbed(bool grabbed) = 0;
    virtual bool canControlCursor() = 0;
    virtual bool isCursorVisible() = 0;
    virtual bool setCursorVisible(bool visible) = 0;
    virtual bool warpCursor(unsigned short x, unsigned short y) = 0;

    // Writes what the window shows to an image file (PNG, or another type by the
    // extension). False, with an error line, when the window cannot.
    virtual bool saveScreenshot(const std::string& fileName);

    const std::string& getName() const;

protected:
    // The options are for the back end; this class does not read them.
    RenderWindow(int id, const std::string& name, int width, int height, bool fullscreen, int offsetX,
                 int offsetY, Dorvan::LinkedMap<std::string, std::string>* options);

private:
    std::string mName;
    bool mPrimary;
    bool mFullscreen;
    int mOffsetX;
    int mOffsetY;
};

}  // namespace Velun
