#include "scene/TransformedNode.h"

namespace Velun {

TransformedNode::TransformedNode(Node* node)
    : mNode(node), mNeedsPropagation(false), mInverseDirty(true), mInverseWorld(nullptr) {
    mWorld.setIdentity();
}

TransformedNode::~TransformedNode() { delete mInverseWorld; }

void TransformedNode::assignWorldTransformation(Dorvan::Matrix<float, 4> const& world,
                                                Dorvan::Matrix<float, 4> const& inverse) {
    mWorld = world;
    if (mInverseWorld)
        *mInverseWorld = inverse;
    else
        mInverseWorld = new Dorvan::Matrix<float, 4>(inverse);
    mInverseDirty = false;
}

Dorvan::Matrix<float, 4> const& TransformedNode::getInverseWorldTransformation() const {
    if (mInverseDirty) {
        if (mInverseWorld)
            *mInverseWorld = mWorld.inverse();
        else
            mInverseWorld = new Dorvan::Matrix<float, 4>(mWorld.inverse());
        mInverseDirty = false;
    }
    return *mInverseWorld;
}

}  // namespace Velun
