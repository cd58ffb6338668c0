#include "plugins/render/opengl/GLViewRenderer.h"

#include "plugins/render/opengl/GLTraverserHandler.h"
#include "scene/Frustrum.h"
#include "scene/View.h"

namespace Velun {

using Dorvan::SharedPtr;

GLViewRenderer::GLViewRenderer(GLRenderContext* context, SharedPtr<View> const& view,
                               SharedPtr<RenderSettings> settings, SharedPtr<Frustrum> frustum)
    : mView(view), mFrustum(frustum), mSettings(settings), mMaterialManager(context),
      mSceneManager(context, settings), mObjectRenderer(context, settings) {
    mHandler = SharedPtr<GLTraverserHandler>(
        new GLTraverserHandler(&mSceneManager, &mObjectRenderer, mView->getViewFilter()));
    mView->addHandler(SharedPtr<Traverser::Handler>(mHandler));
    mMaterialManager.setSceneManager(&mSceneManager);
    mObjectRenderer.setSceneManager(&mSceneManager);
    mObjectRenderer.setMaterialManager(&mMaterialManager);
}

GLViewRenderer::~GLViewRenderer() {
    // The handler points into this pass; a view kept by someone else must not reach it.
    mHandler->detach();
}

void GLViewRenderer::traverse() {
    mView->reset(false);
    mView->walk(0, false);
}

void GLViewRenderer::setProjection() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    if (mFrustum->getProjectionMode() == 0)
        glLoadTransposeMatrixf(mFrustum->getProjectionMatrix().m);
    else
        glOrtho(0.0, 1.0, 0.0, 1.0, mFrustum->getNearDistance(), mFrustum->getFarDistance());
}

void GLViewRenderer::setModelview() {
    glMatrixMode(GL_MODELVIEW);
    glLoadTransposeMatrixf(mFrustum->getViewMatrix().m);
    // The view matrix stays one level down; each drawable is placed from it.
    glPushMatrix();
    mSceneManager.setViewMatrix(mFrustum->getViewMatrix());
    mSceneManager.setupLights();
    mSceneManager.restoreDefaultSettings();
    mSceneManager.setupFog();
}

void GLViewRenderer::render() { mObjectRenderer.renderAll(); }

void GLViewRenderer::popModelview() { glPopMatrix(); }

void GLViewRenderer::run() {
    traverse();
    setProjection();
    setModelview();
    render();
    popModelview();
}

}  // namespace Velun
