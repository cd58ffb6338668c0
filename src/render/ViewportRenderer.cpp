#include "render/ViewportRenderer.h"

#include "scene/Camera.h"

namespace Velun {

ViewportRenderer::~ViewportRenderer() {}

int ViewportRenderer::renderTarget(RenderTarget& target, int width, int height) {
    clearSurface();
    int passes = 0;
    int count = target.getViewportCount();
    for (int i = 0; i < count; ++i) {
        Dorvan::SharedPtr<Viewport> viewport = target.getViewport(i);
        if (viewport.isNull() || !viewport->isEnabled())
            continue;
        Dorvan::SharedPtr<Camera> camera = viewport->getCamera();
        if (camera.isNull())
            continue;
        int w = viewport->getWidth(width);
        int h = viewport->getHeight(height);
        if (w <= 0 || h <= 0)
            continue;
        float aspect = static_cast<float>(w) / static_cast<float>(h);
        setViewport(viewport->getPosX(width), viewport->getPosY(height), w, h);
        Dorvan::SharedPtr<View> view = camera->getView(aspect);
        if (view.isNull())
            continue;
        clearDepth();
        renderPass(*camera, view, false);
        ++passes;
        if (camera->useOverlay()) {
            Dorvan::SharedPtr<View> overlayView = camera->getOverlayView(aspect);
            if (overlayView.isNull())
                continue;
            clearDepth();
            renderPass(*camera, overlayView, true);
            ++passes;
        }
    }
    return passes;
}

}  // namespace Velun
