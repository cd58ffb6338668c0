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
    void assignWorldTransformation(Dorvan::Matrix<float, 4> const& world,
                                   Dorvan::Matrix<float, 4> const& inverse);

    // In world coordinates; always a BoundingBox.
    BoundingVolume& getBoundingVolume() const { return mBoundingVolume; }
    BoundingBox& getBoundingBox() const { return mBoundingVolume; }

    // Set while the update pass is below a node whose world transformation changed.
    bool needsPropagation() const { return mNeedsPropagation; }
    void setNeedsPropagation(bool needs) { mNeedsPropagation = needs; }

private:
    // In the order the walks read them: culling needs the volume only.
    Node* mNode;
    bool mNeedsPropagation;
    mutable bool mInverseDirty;
    mutable BoundingBox mBoundingVolume;
    Dorvan::Matrix<float, 4> mWorld;
    // Made when first needed (cameras, or a pass that computes inverses), so that
    // the many nodes whose inverse nobody reads stay small.
    mutable Dorvan::Matrix<float, 4>* mInverseWorld;
};

}  // namespace Velun
