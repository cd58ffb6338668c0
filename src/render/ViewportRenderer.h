#pragma once

#include "foundation/SharedPtr.h"
#include "render/RenderTarget.h"
#include "scene/RenderSettings.h"
#include "scene/View.h"
#include "velun_export.h"

namespace Velun {

class Camera;

// The front end's part of drawing a RenderTarget: which viewport is drawn, in which
// order, with which view. A back end derives from it and supplies the graphics calls.
//
// renderTarget clears the surface once; then for each viewport in list order that is
// enabled, has a camera and a rectangle of at least one pixel: sets the rectangle, asks
// the camera for its view with the rectangle's aspect (width over height), clears the
// depth buffer and runs a pass; if the camera uses an overlay, clears the depth buffer
// again and runs a second pass with the overlay's view. A camera in no scene gives no
// view, and its viewport is skipped.
class VELUN_EXPORT ViewportRenderer {
public:
    virtual ~ViewportRenderer();

    // `width` and `height` are the surface's, in pixels. Returns the number of passes run.
    int renderTarget(RenderTarget& target, int width, int height);

protected:
    // Once per target, before any viewport.
    virtual void clearSurface() = 0;
    // Pixels, in the surface's coordinates (for OpenGL from the lower left corner).
    virtual void setViewport(int x, int y, int width, int height) = 0;
    virtual void clearDepth() = 0;
    // Walk the view and draw what it hands over. The view carries the frustum and the
    // render settings (null settings mean the defaults). `overlay` tells the second pass.
    virtual void renderPass(Camera& camera, Dorvan::SharedPtr<View> const& view, bool overlay) = 0;
};

}  // namespace Velun
