#include "scene/UpdateTraverser.h"

#include "geometry/Drawable.h"
#include "scene/Branch.h"
#include "scene/Leaf.h"
#include "scene/SceneRoot.h"
#include "scene/TransformationNode.h"

namespace Velun {

UpdateTraverser::UpdateHandler::UpdateHandler(UpdateTraverser* traverser, bool calcInverse)
    : mTraverser(traverser), mCalcInverse(calcInverse) {}

UpdateTraverser::UpdateHandler::~UpdateHandler() {}

void UpdateTraverser::UpdateHandler::reset(Node&) {}

namespace {

// The pass's step on the way down into a node with a parent; ResultSkip cuts off an
// unchanged subtree.
inline Traverser::StatusResult enter(Node& node, Group& parent, bool calcInverse) {
    TransformedNode& tn = node.getTransformedNode();
    node.startUpdate();
    node.update(true);

    TransformedNode& ptn = parent.getTransformedNode();
    bool parentMoved = ptn.needsPropagation();
    Node::NodeStatus status = node.getNodeStatus();
    if (status == Node::StatusUpdated && !parentMoved) {
        // Nothing below changed and the world above did not move: the subtree keeps
        // its matrices and volume, which still count for the parent's volume.
        ptn.getBoundingBox().mergeBox(tn.getBoundingBox());
        return Traverser::ResultSkip;
    }

    bool changed = status == Node::StatusNew || status == Node::StatusModified;
    TransformationNode* transformation =
        node.getNodeType() == Node::TypeTransformation ? dynamic_cast<TransformationNode*>(&node) : nullptr;
    if (transformation) {
        if (changed || parentMoved) {
            Dorvan::Matrix<float, 4> world =
                ptn.getWorldTransformation() * transformation->getLocalTransformation();
            if (calcInverse)
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
        if (calcInverse)
            tn.assignWorldTransformation(ptn.getWorldTransformation(), ptn.getInverseWorldTransformation());
        else
            tn.assignWorldTransformation(ptn.getWorldTransformation());
        tn.setNeedsPropagation(true);
    }

    BoundingBox& volume = tn.getBoundingBox();
    volume.BoundingBox::setEmpty();
    if (node.isLeaf()) {
        BoundingVolume const* own = static_cast<Leaf&>(node).getBoundingVolume();
        if (own && own->getVolumeType() == BoundingVolume::VolumeBox)
            volume.mergeBox(static_cast<BoundingBox const&>(*own), tn.getWorldTransformation());
        else if (own)
            volume.merge(*own, tn.getWorldTransformation());
        ptn.getBoundingBox().mergeBox(volume);
    }
    return Traverser::ResultContinue;
}

// The step back up into a group after its children. A drawable group adds its own
// volume to theirs.
inline void leave(Node& node) {
    TransformedNode& tn = node.getTransformedNode();
    if (Group* parent = node.getParent()) {
        if (node.getNodeType() == Node::TypeObject) {
            Drawable* drawable = dynamic_cast<Drawable*>(&node);
            if (BoundingVolume const* own = drawable ? drawable->getBoundingVolume() : nullptr)
                tn.getBoundingBox().merge(*own, tn.getWorldTransformation());
        }
        parent->getTransformedNode().getBoundingBox().mergeBox(tn.getBoundingBox());
    }
    node.update(false);
    node.finishUpdate();
    tn.setNeedsPropagation(false);
}

}  // namespace

Traverser::StatusResult UpdateTraverser::UpdateHandler::handle(Node& node, Direction direction, Node*) {
    if (direction == DirectionUp) {
        leave(node);
        return ResultContinue;
    }
    if (direction != DirectionDown && direction != DirectionNext && direction != DirectionPrev)
        return ResultContinue;
    Group* parent = node.getParent();
    if (!parent) {
        node.startUpdate();
        return ResultContinue;
    }
    return enter(node, *parent, mCalcInverse);
}

UpdateTraverser::ModifiedFilter::~ModifiedFilter() {}

Traverser::StatusResult UpdateTraverser::ModifiedFilter::filter(Node& node) {
    return node.getNodeStatus() == Node::StatusUpdated ? ResultSkip : ResultContinue;
}

UpdateTraverser::UpdateTraverser(SceneRoot& root)
    : Traverser(*root.getRoot()), mSceneRoot(&root), mRoot(root.getRoot()),
      mHandler(new UpdateHandler(this, false)) {
    addHandler(mHandler);
    setSkipRoot(true);
}

UpdateTraverser::UpdateTraverser(Node& root)
    : Traverser(root), mSceneRoot(nullptr), mRoot(&root), mHandler(new UpdateHandler(this, false)) {
    addHandler(mHandler);
    setSkipRoot(true);
}

UpdateTraverser::~UpdateTraverser() {}

int UpdateTraverser::run(std::int64_t) {
    reset(false);
    if (getHandlerCount() == 1 && getFilterCount() == 0 && doSkipRoot())
        runAlone();
    else
        walk(0, false);
    return 0;
}

// How many siblings ahead the update pass fetches: about a memory latency's worth of
// nodes.
int const kAhead = 16;

// The general walk without filters, restricted to what the update handler does: the
// same nodes in the same order, with the root left out on the way in.
void UpdateTraverser::runAlone() {
    mHandler->reset(*mRoot);
    if (!mRoot->isGroup() || static_cast<Group*>(mRoot)->getAttachedChildCount() == 0)
        return;
    bool calcInverse = mHandler->doCalcInverse();
    mPath.clear();
    Group* group = static_cast<Group*>(mRoot);
    int position = 0;
    for (;;) {
        int const count = group->getAttachedChildCount();
        if (position < count) {
            // A large scene does not fit the caches: a sibling some steps ahead is
            // fetched while this one is updated (its volume, world matrix and, for a
            // leaf, the leaf's own volume after the node's fields).
            if (position + kAhead < count) {
                char const* ahead = reinterpret_cast<char const*>(group->getAttachedChild(position + kAhead));
                for (int line = 0; line < 5; ++line)
                    __builtin_prefetch(ahead + line * 64);
            }
            Node* child = group->getAttachedChild(position);
            if (enter(*child, *group, calcInverse) == ResultContinue && child->isGroup() &&
                static_cast<Group*>(child)->getAttachedChildCount() > 0) {
                mPath.push_back(Step{group, position});
                group = static_cast<Group*>(child);
                position = 0;
            } else {
                ++position;
            }
            continue;
        }
        leave(*group);
        if (mPath.empty())
            return;
        group = mPath.back().mGroup;
        position = mPath.back().mPosition + 1;
        mPath.pop_back();
    }
}

}  // namespace Velun
