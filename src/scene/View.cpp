#include "scene/View.h"

#include "scene/Branch.h"
#include "scene/SceneRoot.h"

namespace Velun {

View::ViewFilter::ViewFilter(Frustrum* frustrum) : mFrustrum(frustrum), mDistance(0.0f) {}

View::ViewFilter::~ViewFilter() {}

Traverser::StatusResult View::ViewFilter::filter(Node& node) {
    // World volumes are always boxes: no virtual dispatch for the test every node pays.
    mDistance = node.getTransformedNode().getBoundingBox().BoundingBox::getFrustrumDistance(*mFrustrum);
    return mDistance < 0.0f ? ResultSkip : ResultContinue;
}

View::View(SceneRoot& root, Dorvan::SharedPtr<Frustrum> frustrum, Dorvan::SharedPtr<RenderSettings> settings)
    : Traverser(*root.getRoot()), mSceneRoot(&root), mRenderSettings(settings), mFrustrum(frustrum),
      mViewFilter(nullptr) {
    setSkipRoot(false);
    if (!mFrustrum.isNull() && mFrustrum->getProjectionMode() == CameraSettings::Perspective) {
        mViewFilter = new ViewFilter(mFrustrum.get());
        addFilter(Dorvan::SharedPtr<Traverser::Filter>(mViewFilter));
    }
}

View::~View() {}

}  // namespace Velun
