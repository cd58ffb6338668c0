#pragma once
#include "render/ViewportRenderer.h"
#include "velun_export.h"

namespace Velun {
class GLRenderContext;

// Draws a render target into the current GL window: one clear of the whole surface,
// then per viewport its rectangle, a depth clear and a GLViewRenderer pass for the
// camera's view, and one more after another depth clear for its overlay.
class VELUN_EXPORT GLViewportRenderer : public ViewportRenderer {
public:
    explicit GLViewportRenderer(GLRenderContext* context);
    ~GLViewportRenderer() override;

    // Draw calls of all passes so far.
    unsigned int getDrawCallCount() const { return mDrawCalls; }

protected:
    void clearSurface() override;
    void setViewport(int x, int y, int width, int height) override;
    void clearDepth() override;
    void renderPass(Camera& camera, Dorvan::SharedPtr<View> const& view, bool overlay) override;

private:
    GLRenderContext* mContext;
    unsigned int mDrawCalls;
};

}  // namespace Velun
