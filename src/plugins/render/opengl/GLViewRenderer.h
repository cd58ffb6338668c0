#pragma once
#include "foundation/SharedPtr.h"
#include "plugins/render/opengl/GLMaterialManager.h"
#include "plugins/render/opengl/GLObjectRenderer.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "velun_export.h"

namespace Velun {
class Frustrum;
class GLRenderContext;
class GLTraverserHandler;
class RenderSettings;
class View;

// One view pass: the pass objects for one camera view, in one viewport, in one frame.
// The walk collects lights and drawables without touching GL; then projection, view
// matrix, lights and fog are set and everything collected is drawn.
class VELUN_EXPORT GLViewRenderer {
public:
    // Adds its handler to `view`; the frustum gives the projection and view matrices.
    GLViewRenderer(GLRenderContext* context, Dorvan::SharedPtr<View> const& view,
                   Dorvan::SharedPtr<RenderSettings> settings, Dorvan::SharedPtr<Frustrum> frustum);
    virtual ~GLViewRenderer();
    GLViewRenderer(GLViewRenderer const&) = delete;
    GLViewRenderer& operator=(GLViewRenderer const&) = delete;

    // The five steps of a pass, in this order.
    void traverse();
    void setProjection();
    void setModelview();
    void render();
    void popModelview();
    // All five.
    void run();

    GLMaterialManager& getMaterialManager() { return mMaterialManager; }
    GLSceneManager& getSceneManager() { return mSceneManager; }
    GLObjectRenderer& getObjectRenderer() { return mObjectRenderer; }

private:
    Dorvan::SharedPtr<View> mView;
    Dorvan::SharedPtr<Frustrum> mFrustum;
    Dorvan::SharedPtr<RenderSettings> mSettings;
    GLMaterialManager mMaterialManager;
    GLSceneManager mSceneManager;
    GLObjectRenderer mObjectRenderer;
    Dorvan::SharedPtr<GLTraverserHandler> mHandler;
};

}  // namespace Velun
