#include "scene/Traverser.h"

#include "scene/Group.h"

namespace Velun {

Traverser::Filter::~Filter() {}

Traverser::Handler::~Handler() {}

Traverser::Traverser(Node& root) : mSkipRoot(false), mRoot(&root), mMaxDepth(0), mCurrent(&root) {
    mPositions.reserve(32);
}

Traverser::~Traverser() {}

void Traverser::addHandler(Dorvan::SharedPtr<Handler> handler) {
    mHandlers.add(handler);
    mHandlerList.push_back(handler.get());
}

void Traverser::addFilter(Dorvan::SharedPtr<Filter> filter) {
    mFilters.add(filter);
    mFilterList.push_back(filter.get());
}

bool Traverser::isLeaf() const { return mCurrent->isLeaf(); }

int Traverser::getChildCount() const { return getNodeChildCount(mCurrent); }

int Traverser::getNodeChildCount(Node* node) {
    return node->isGroup() ? static_cast<Group*>(node)->getAttachedChildCount() : -1;
}

bool Traverser::isFiltered(Node* node) const {
    if (!node)
        return true;
    for (Filter* filter : mFilterList) {
        StatusResult r = filter->filter(*node);
        if (r == ResultAccept)
            return false;
        if (r == ResultSkip)
            return true;
    }
    return false;
}

int Traverser::getSibling(Group* group, int position, bool backward) const {
    int count = group->getAttachedChildCount();
    if (position < 0 || position >= count)
        return -1;
    if (mFilterList.empty())
        return position;
    if (backward) {
        for (int i = position; i >= 0; --i)
            if (!isFiltered(group->getAttachedChild(i)))
                return i;
    } else {
        for (int i = position; i < count; ++i)
            if (!isFiltered(group->getAttachedChild(i)))
                return i;
    }
    return -1;
}

Traverser::StatusResult Traverser::handleNode(Node& node, Direction direction, Node* previous) {
    for (Handler* handler : mHandlerList) {
        StatusResult result = handler->handle(node, direction, previous);
        if (result != ResultContinue)
            return result;
    }
    return ResultAccept;
}

void Traverser::resetHandler(Node& start) {
    for (Handler* handler : mHandlerList)
        handler->reset(start);
}

Node* Traverser::stepDown(int position) {
    if (!mCurrent->isGroup() || position < -1)
        return nullptr;
    Group* group = static_cast<Group*>(mCurrent);
    int count = group->getAttachedChildCount();
    int found = position == -1 ? getSibling(group, count - 1, true) : getSibling(group, position, false);
    if (found < 0)
        return nullptr;
    mPositions.push_back(found);
    mCurrent = group->getAttachedChild(found);
    if (static_cast<int>(mPositions.size()) > mMaxDepth)
        mMaxDepth = static_cast<int>(mPositions.size());
    return mCurrent;
}

Node* Traverser::stepUp() {
    Group* parent = mCurrent->getParent();
    if (mCurrent == mRoot || !parent || mPositions.empty())
        return nullptr;
    mPositions.pop_back();
    mCurrent = parent;
    return mCurrent;
}

Node* Traverser::stepSideways(bool backward) {
    Group* parent = mCurrent->getParent();
    if (mPositions.empty() || !parent)
        return nullptr;
    int found = getSibling(parent, mPositions.back() + (backward ? -1 : 1), backward);
    if (found < 0)
        return nullptr;
    mPositions.back() = found;
    mCurrent = parent->getAttachedChild(found);
    return mCurrent;
}

Node* Traverser::moveDown(int position) { return stepDown(position); }

Node* Traverser::moveUp(bool) { return stepUp(); }

Node* Traverser::nextSibling() { return stepSideways(false); }

Node* Traverser::prevSibling() { return stepSideways(true); }

void Traverser::reset(bool) {
    mMaxDepth = 0;
    mPositions.clear();
    mCurrent = mRoot;
}

Node* Traverser::walk(int maxDepth, bool reverse) {
    Node* start = mCurrent;
    resetHandler(*start);
    if (!mSkipRoot && handleNode(*start, DirectionDown, nullptr) != ResultAccept)
        return start;
    if (start->isLeaf())
        return nullptr;

    Node* previous = start;
    int depth = 0;
    bool skip = false;
    for (;;) {
        Node* next = nullptr;
        Direction direction = DirectionDown;
        if (!skip && mCurrent->isGroup() && (maxDepth == 0 || depth < maxDepth)) {
            next = stepDown(reverse ? -1 : 0);
            if (next)
                ++depth;
        }
        if (!next) {
            skip = false;
            // The walk covers the start node's subtree only: it never moves beside it.
            if (mCurrent == start)
                return nullptr;
            next = stepSideways(reverse);
            direction = reverse ? DirectionPrev : DirectionNext;
            if (!next) {
                if (mCurrent == mRoot || !stepUp())
                    return nullptr;
                next = mCurrent;
                direction = DirectionUp;
                skip = true;
                --depth;
            }
        }
        StatusResult result = handleNode(*next, direction, previous);
        if (result == ResultStop)
            return next;
        if (result == ResultSkip)
            skip = true;
        previous = next;
        if (next == start)
            return nullptr;
    }
}

}  // namespace Velun
