#include "render/RenderTarget.h"

#include <sstream>

#include "core/VelunCore.h"

namespace Velun {

RenderTarget::RenderTarget() {}

RenderTarget::~RenderTarget() {}

int RenderTarget::attachViewport(Dorvan::SharedPtr<Viewport> viewport) { return mViewports.add(viewport); }

int RenderTarget::insertViewport(int position, Dorvan::SharedPtr<Viewport> viewport) {
    if (position < 0 || position >= getViewportCount())
        return mViewports.add(viewport);
    mViewports.insert(static_cast<unsigned int>(position), viewport);
    return position;
}

Dorvan::SharedPtr<Viewport> RenderTarget::getViewport(int position) const {
    return mViewports.get(static_cast<unsigned int>(position));
}

Dorvan::SharedPtr<Viewport> RenderTarget::detachViewport(int position) {
    if (position < 0 || position >= getViewportCount()) {
        std::ostringstream text;
        text << "RenderTarget::detachViewport: no viewport at position " << position << " of "
             << getViewportCount();
        VelunCore::getLogger("render")->error(text.str());
        return Dorvan::SharedPtr<Viewport>();
    }
    Dorvan::SharedPtr<Viewport> viewport = mViewports.get(static_cast<unsigned int>(position));
    mViewports.removeAt(static_cast<unsigned int>(position));
    return viewport;
}

int RenderTarget::getViewportCount() const { return static_cast<int>(mViewports.size()); }

}  // namespace Velun
