#pragma once

#include "scene/BoundingBox.h"
#include "scene/Matrix.h"
#include "velun_export.h"

namespace Velun {

class Node;

// Where a node is in the world: its world transformation, the inverse (computed when
// first asked for) and its world bounding volume. Written by the update pass; every
// node owns one.
class VELUN_EXPORT TransformedNode {
public:
    explicit TransformedNode(Node* node);
    virtual ~TransformedNode();

    TransformedNode(TransformedNode const&) = delete;
    TransformedNode& operator=(TransformedNode const&) = delete;

    Node* getNode() const { return mNode; }

    Dorvan::Matrix<float, 4> const& getWorldTransformation() const { return mWorld; }
    Dorvan::Matrix<float, 4> const& getInverseWorldTransformation() const;

    // Stores the world transformation; its inverse follows on demand.
    void assignWorldTransformation(Dorvan::Matrix<float, 4> const& world) {
        mWorld = world;
        mInverseDirty = true;
    }
    void assignWorldTransformation(Dorvan::Matrix<float, 4> const& world, Dorvan::Matrix<float, 4> const& inverse) {
        mWorld = world;
        mInverseWorld = inverse;
        mInverseDirty = false;
    }

    // In world coordinates; always a BoundingBox.
    BoundingVolume& getBoundingVolume() const { return mBoundingVolume; }
    BoundingBox& getBoundingBox() const { return mBoundingVolume; }

    // Set while the update pass is below a node whose world transformation changed.
    bool needsPropagation() const { return mNeedsPropagation; }
    void setNeedsPropagation(bool needs) { mNeedsPropagation = needs; }

private:
    Node* mNode;
    bool mNeedsPropagation;
    mutable bool mInverseDirty;
    Dorvan::Matrix<float, 4> mWorld;
    mutable BoundingBox mBoundingVolume;
    mutable Dorvan::Matrix<float, 4> mInverseWorld;
};

}  // namespace Velun
