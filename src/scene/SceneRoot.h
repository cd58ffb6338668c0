#pragma once

#include "foundation/SharedPtr.h"
#include "scene/UpdateTraverser.h"
#include "velun_export.h"

namespace Velun {

class Branch;
class Frustrum;
class Node;
class RenderSettings;
class View;

// The owner of one scene tree: its root Branch, whose world volume is infinite, and
// the update pass that runs over it.
class VELUN_EXPORT SceneRoot {
    friend class Node;

public:
    explicit SceneRoot(int id);
    virtual ~SceneRoot();

    SceneRoot(SceneRoot const&) = delete;
    SceneRoot& operator=(SceneRoot const&) = delete;

    int getSceneId() const { return mSceneId; }
    Branch* getRoot() const { return mRoot; }
    Dorvan::SharedPtr<UpdateTraverser> getUpdateTraverser() const { return mUpdateTraverser; }
    // A new view of this scene through the frustum; `settings` may be null.
    Dorvan::SharedPtr<View> getView(Dorvan::SharedPtr<Frustrum> frustrum,
                                    Dorvan::SharedPtr<RenderSettings> settings);

private:
    // Told by each node that joins or leaves this scene.
    bool attachNode(Node& node);
    bool detachNode(Node& node);

    int mSceneId;
    Branch* mRoot;
    Dorvan::SharedPtr<UpdateTraverser> mUpdateTraverser;
};

}  // namespace Velun
