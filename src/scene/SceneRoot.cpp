#include "scene/SceneRoot.h"

#include "scene/Branch.h"
#include "scene/View.h"

namespace Velun {

SceneRoot::SceneRoot(int id) : mSceneId(id), mRoot(new Branch()) {
    mRoot->getTransformedNode().getBoundingVolume().setInfinite();
    static_cast<Node*>(mRoot)->attachSceneRoot(*this);
    mUpdateTraverser = Dorvan::SharedPtr<UpdateTraverser>(new UpdateTraverser(*this));
}

SceneRoot::~SceneRoot() {
    mUpdateTraverser.release();
    delete mRoot;
}

Dorvan::SharedPtr<View> SceneRoot::getView(Dorvan::SharedPtr<Frustrum> frustrum,
                                           Dorvan::SharedPtr<RenderSettings> settings) {
    return Dorvan::SharedPtr<View>(new View(*this, frustrum, settings));
}

bool SceneRoot::attachNode(Node&) { return true; }

bool SceneRoot::detachNode(Node&) { return true; }

}  // namespace Velun
