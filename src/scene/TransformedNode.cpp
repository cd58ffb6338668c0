#include "scene/TransformedNode.h"

namespace Velun {

TransformedNode::TransformedNode(Node* node) : mNode(node), mNeedsPropagation(false), mInverseDirty(false) {
    mWorld.setIdentity();
    mInverseWorld.setIdentity();
}

TransformedNode::~TransformedNode() {}

Dorvan::Matrix<float, 4> const& TransformedNode::getInverseWorldTransformation() const {
    if (mInverseDirty) {
        mInverseWorld = mWorld.inverse();
        mInverseDirty = false;
    }
    return mInverseWorld;
}

}  // namespace Velun
