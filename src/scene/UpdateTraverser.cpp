#include "scene/UpdateTraverser.h"

#include "scene/Branch.h"
#include "scene/Leaf.h"
#include "scene/SceneRoot.h"
#include "scene/TransformationNode.h"

namespace Velun {

UpdateTraverser::UpdateHandler::UpdateHandler(UpdateTraverser* traverser, bool calcInverse)
    : mTraverser(traverser), mCalcInverse(calcInverse) {}

UpdateTraverser::UpdateHandler::~UpdateHandler() {}

void UpdateTraverser::UpdateHandler::reset(Node&) {}

Traverser::StatusResult UpdateTraverser::UpdateHandler::handle(Node& node, Direction direction, Node*) {
    TransformedNode& tn = node.getTransformedNode();
    Group* parent = node.getParent();

    if (direction == DirectionUp) {
        if (parent)
            parent->getTransformedNode().getBoundingBox().mergeBox(tn.getBoundingBox());
        node.update(false);
        node.finishUpdate();
        tn.setNeedsPropagation(false);
        return ResultContinue;
    }
    if (direction != DirectionDown && direction != DirectionNext && direction != DirectionPrev)
        return ResultContinue;

    node.startUpdate();
    if (!parent)
        return ResultContinue;
    node.update(true);

    TransformedNode& ptn = parent->getTransformedNode();
    bool parentMoved = ptn.needsPropagation();
    Node::NodeStatus status = node.getNodeStatus();
    if (status == Node::StatusUpdated && !parentMoved) {
        // Nothing below changed and the world above did not move: the subtree keeps
        // its matrices and volume, which still count for the parent's volume.
        ptn.getBoundingBox().mergeBox(tn.getBoundingBox());
        return ResultSkip;
    }

    bool changed = status == Node::StatusNew || status == Node::StatusModified;
    TransformationNode* transformation =
        node.getNodeType() == Node::TypeTransformation ? dynamic_cast<TransformationNode*>(&node) : 0;
    if (transformation) {
        if (changed || parentMoved) {
            Dorvan::Matrix<float, 4> world = ptn.getWorldTransformation() * transformation->getLocalTransformation();
            if (mCalcInverse)
                tn.assignWorldTransformation(world, transformation->getInverseTransformation() *
                                                        ptn.getInverseWorldTransformation());
            else
                tn.assignWorldTransformation(world);
            tn.setNeedsPropagation(true);
        }
    } else if (changed || parentMoved) {
        // A plain node has no transformation of its own. A new or changed one takes
        // its parent's even if the parent did not move, so that a node attached below
        // a placed transformation is drawn there.
        if (mCalcInverse)
            tn.assignWorldTransformation(ptn.getWorldTransformation(), ptn.getInverseWorldTransformation());
        else
            tn.assignWorldTransformation(ptn.getWorldTransformation());
        tn.setNeedsPropagation(true);
    }

    BoundingBox& volume = tn.getBoundingBox();
    volume.setEmpty();
    if (node.isLeaf()) {
        BoundingVolume const* own = static_cast<Leaf&>(node).getBoundingVolume();
        if (own)
            volume.merge(*own, tn.getWorldTransformation());
        ptn.getBoundingBox().mergeBox(volume);
    }
    return ResultContinue;
}

UpdateTraverser::ModifiedFilter::~ModifiedFilter() {}

Traverser::StatusResult UpdateTraverser::ModifiedFilter::filter(Node& node) {
    return node.getNodeStatus() == Node::StatusUpdated ? ResultSkip : ResultContinue;
}

UpdateTraverser::UpdateTraverser(SceneRoot& root)
    : Traverser(*root.getRoot()), mSceneRoot(&root), mHandler(new UpdateHandler(this, false)) {
    addHandler(mHandler);
    setSkipRoot(true);
}

UpdateTraverser::UpdateTraverser(Node& root) : Traverser(root), mSceneRoot(0), mHandler(new UpdateHandler(this, false)) {
    addHandler(mHandler);
    setSkipRoot(true);
}

UpdateTraverser::~UpdateTraverser() {}

int UpdateTraverser::run(std::int64_t) {
    reset(false);
    walk(0, false);
    return 0;
}

}  // namespace Velun
