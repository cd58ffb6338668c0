#pragma once

#include <cstdint>

#include "foundation/SharedPtr.h"
#include "render/RenderTarget.h"
#include "velun_export.h"

namespace Velun {

class RenderContext;
class RenderEngine;

// A surface with a size and an id that draws an attached RenderTarget: a window, or a
// texture. Width and height are fixed at construction.
class VELUN_EXPORT TargetRenderer {
public:
    virtual ~TargetRenderer();

    virtual int getId() const;
    virtual int getHeight() const;
    virtual int getWidth() const;
    // May be null: a surface without a target is only cleared.
    virtual Dorvan::SharedPtr<RenderTarget> getRenderTarget() const;
    // Replaces the present target.
    virtual void attachRenderTarget(Dorvan::SharedPtr<RenderTarget> target);
    virtual void detachRenderTarget();

    virtual RenderEngine* getRenderEngine() = 0;
    virtual RenderContext* getRenderContext() = 0;
    // Draws one frame of the attached target.
    virtual void render(std::int64_t timestamp) = 0;

    // Draw calls the back end issued for the last frame drawn: for statistics and HUDs.
    unsigned int getDrawCallCount() const { return mDrawCallCount; }

protected:
    TargetRenderer(int id, int width, int height);
    void setDrawCallCount(unsigned int count) { mDrawCallCount = count; }

private:
    TargetRenderer(const TargetRenderer&);
    TargetRenderer& operator=(const TargetRenderer&);

    int mId;
    int mWidth;
    int mHeight;
    Dorvan::SharedPtr<RenderTarget> mRenderTarget;
    unsigned int mDrawCallCount = 0;
};

}  // namespace Velun
