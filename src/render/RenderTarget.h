#pragma once

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "render/Viewport.h"
#include "velun_export.h"

namespace Velun {

// What a surface shows: an ordered list of viewports. Later viewports are drawn over
// earlier ones, with the depth buffer cleared in between. One target can be attached
// to several surfaces.
class VELUN_EXPORT RenderTarget {
public:
    RenderTarget();
    virtual ~RenderTarget();

    // Appends; returns the position.
    int attachViewport(Dorvan::SharedPtr<Viewport> viewport);
    // Puts the viewport before `position` (at or past the end appends); returns its position.
    int insertViewport(int position, Dorvan::SharedPtr<Viewport> viewport);
    // Unchecked: the caller stays below the count.
    Dorvan::SharedPtr<Viewport> getViewport(int position) const;
    // Removes the viewport at `position` and returns it; null for a position outside the list.
    Dorvan::SharedPtr<Viewport> detachViewport(int position);
    int getViewportCount() const;

private:
    Dorvan::Vector<Dorvan::SharedPtr<Viewport>> mViewports;
};

}  // namespace Velun
