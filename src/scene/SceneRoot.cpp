#include "scene/SceneRoot.h"

#include "scene/Branch.h"

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

bool SceneRoot::attachNode(Node&) { return true; }

bool SceneRoot::detachNode(Node&) { return true; }

}  // namespace Velun
