#pragma once

#include "foundation/SharedPtr.h"
#include "scene/Frustrum.h"
#include "scene/RenderSettings.h"
#include "scene/Traverser.h"
#include "velun_export.h"

namespace Velun {

class SceneRoot;

// The walk of one camera over its scene for one pass: a traverser from the scene's
// root that carries the frustum and the render settings. A perspective view culls
// with its ViewFilter: a node whose world volume lies outside the frustum is neither
// handled nor entered. An orthographic view culls nothing.
//
// The render side adds its Handler and walks the view once; the handler sees the
// surviving nodes in walking order and, for each, getViewFilter()->getDistance()
// holds that node's depth value. Views are made anew for each pass.
class VELUN_EXPORT View : public Traverser {
public:
    // Culls by the world volume of each node against the frustum; the root is never tested.
    class VELUN_EXPORT ViewFilter : public Traverser::Filter {
    public:
        // The frustum is not owned; it must outlive the filter.
        explicit ViewFilter(Frustrum* frustrum);
        ~ViewFilter() override;
        StatusResult filter(Node& node) override;
        // The frustum distance of the node tested last: it grows with the distance
        // from the camera and orders nodes by depth, but is no world unit.
        float getDistance() const { return mDistance; }

    private:
        Frustrum* mFrustrum;
        float mDistance;
    };

    // `settings` may be null: the pass then uses default settings.
    View(SceneRoot& root, Dorvan::SharedPtr<Frustrum> frustrum, Dorvan::SharedPtr<RenderSettings> settings);
    ~View() override;

    SceneRoot& getSceneRoot() const { return *mSceneRoot; }
    Dorvan::SharedPtr<Frustrum> getFrustrum() const { return mFrustrum; }
    Dorvan::SharedPtr<RenderSettings> getRenderSettings() const { return mRenderSettings; }
    // The culling filter, null for an orthographic view.
    ViewFilter* getViewFilter() const { return mViewFilter; }

private:
    SceneRoot* mSceneRoot;
    Dorvan::SharedPtr<RenderSettings> mRenderSettings;
    Dorvan::SharedPtr<Frustrum> mFrustrum;
    ViewFilter* mViewFilter;
};

}  // namespace Velun
