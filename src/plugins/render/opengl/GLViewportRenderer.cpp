#include "plugins/render/opengl/GLViewportRenderer.h"

#include "plugins/render/opengl/GLViewRenderer.h"
#include "scene/View.h"
#include <GL/glew.h>

namespace Velun {

GLViewportRenderer::GLViewportRenderer(GLRenderContext* context) : mContext(context), mDrawCalls(0) {}

GLViewportRenderer::~GLViewportRenderer() {}

void GLViewportRenderer::clearSurface() {
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void GLViewportRenderer::setViewport(int x, int y, int width, int height) { glViewport(x, y, width, height); }

void GLViewportRenderer::clearDepth() { glClear(GL_DEPTH_BUFFER_BIT); }

void GLViewportRenderer::renderPass(Camera&, Dorvan::SharedPtr<View> const& view, bool) {
    // The view's frustum is the one the camera made for this viewport: for the overlay
    // it looks from the overlay's fixed eye point.
    GLViewRenderer pass(mContext, view, view->getRenderSettings(), view->getFrustrum());
    pass.run();
    mDrawCalls += pass.getObjectRenderer().getGeometryRenderer().getDrawCallCount();
}

}  // namespace Velun
