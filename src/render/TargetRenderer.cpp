#include "render/TargetRenderer.h"

namespace Velun {

TargetRenderer::TargetRenderer(int id, int width, int height) : mId(id), mWidth(width), mHeight(height) {}

TargetRenderer::~TargetRenderer() {}

int TargetRenderer::getId() const { return mId; }

int TargetRenderer::getHeight() const { return mHeight; }

int TargetRenderer::getWidth() const { return mWidth; }

Dorvan::SharedPtr<RenderTarget> TargetRenderer::getRenderTarget() const { return mRenderTarget; }

void TargetRenderer::attachRenderTarget(Dorvan::SharedPtr<RenderTarget> target) { mRenderTarget = target; }

void TargetRenderer::detachRenderTarget() { mRenderTarget.release(); }

}  // namespace Velun
