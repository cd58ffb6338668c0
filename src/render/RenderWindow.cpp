#include "render/RenderWindow.h"

#include "core/VelunCore.h"

namespace Velun {

RenderWindow::RenderWindow(int id, const std::string& name, int width, int height, bool fullscreen,
                           int offsetX, int offsetY, Dorvan::LinkedMap<std::string, std::string>*)
    : TargetRenderer(id, width, height), mName(name), mPrimary(false), mFullscreen(fullscreen),
      mOffsetX(offsetX), mOffsetY(offsetY) {}

RenderWindow::~RenderWindow() {}

bool RenderWindow::isPrimary() { return mPrimary; }

bool RenderWindow::isFullscreen() { return mFullscreen; }

int RenderWindow::getOffsetX() { return mOffsetX; }

int RenderWindow::getOffsetY() { return mOffsetY; }

const std::string& RenderWindow::getName() const { return mName; }

bool RenderWindow::saveScreenshot(const std::string& fileName) {
    VelunCore::getLogger("render")->error("Window '" + mName + "' cannot save screenshots: " + fileName);
    return false;
}

}  // namespace Velun
