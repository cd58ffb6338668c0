#include "scene/BoundingFilter.h"

#include "geometry/Drawable.h"
#include "scene/Node.h"

namespace Velun {

BoundingFilter::BoundingFilter()
    : mVolume(nullptr), mMatrix(Dorvan::Matrix<float, 4>::identity()), mUseMatrix(false),
      mTestDrawableVolumes(false) {}

BoundingFilter::BoundingFilter(BoundingVolume const& volume) : BoundingFilter() { mVolume = &volume; }

BoundingFilter::BoundingFilter(Point const& point) : BoundingFilter() { mPoint = point; }

BoundingFilter::~BoundingFilter() {}

void BoundingFilter::setBoundingVolume(BoundingVolume const& volume) {
    mVolume = &volume;
    mUseMatrix = false;
}

void BoundingFilter::setBoundingVolume(BoundingVolume const& volume,
                                       Dorvan::Matrix<float, 4> const& toWorld) {
    mVolume = &volume;
    mMatrix = toWorld;
    mUseMatrix = true;
}

// World volumes are always boxes, so the tests need no virtual dispatch on them.
Traverser::StatusResult BoundingFilter::filter(Node& node) {
    BoundingBox const& world = node.getTransformedNode().getBoundingBox();
    bool touches;
    if (!mVolume)
        touches = world.BoundingBox::contains(mPoint);
    else if (mUseMatrix)
        touches = world.BoundingBox::intersects(*mVolume, mMatrix) != -1;
    else
        touches = world.BoundingBox::intersects(*mVolume) != -1;
    if (touches && mTestDrawableVolumes)
        touches = touchesDrawableVolume(node);
    return touches ? Traverser::ResultContinue : Traverser::ResultSkip;
}

// The query taken into the drawable's local space; nodes that are no drawable, or
// have no volume of their own, pass.
bool BoundingFilter::touchesDrawableVolume(Node& node) const {
    Drawable* drawable = node.getNodeType() == Node::TypeObject ? dynamic_cast<Drawable*>(&node) : nullptr;
    BoundingVolume const* own = drawable ? drawable->getBoundingVolume() : nullptr;
    if (!own)
        return true;
    Dorvan::Matrix<float, 4> const& toLocal = node.getTransformedNode().getInverseWorldTransformation();
    if (!mVolume)
        return own->contains(Point(toLocal * mPoint));
    return own->intersects(*mVolume, mUseMatrix ? toLocal * mMatrix : toLocal) != -1;
}

namespace {

class DrawableCollector : public Traverser::Handler {
public:
    explicit DrawableCollector(std::vector<Drawable*>& found) : mFound(found) {}
    void reset(Node&) override {}
    Traverser::StatusResult handle(Node& node, Traverser::Direction direction, Node*) override {
        if (direction != Traverser::DirectionUp && node.getNodeType() == Node::TypeObject)
            if (Drawable* drawable = dynamic_cast<Drawable*>(&node))
                mFound.push_back(drawable);
        return Traverser::ResultContinue;
    }

private:
    std::vector<Drawable*>& mFound;
};

}  // namespace

std::vector<Drawable*> collectDrawables(Node& root, BoundingFilter const& filter) {
    std::vector<Drawable*> found;
    Dorvan::SharedPtr<BoundingFilter> own(new BoundingFilter(filter));
    // The walk never filters its start node.
    if (own->filter(root) == Traverser::ResultSkip)
        return found;
    Traverser walk(root);
    walk.addFilter(own);
    walk.addHandler(Dorvan::SharedPtr<Traverser::Handler>(new DrawableCollector(found)));
    walk.walk(0, false);
    return found;
}

}  // namespace Velun
