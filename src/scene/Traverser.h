#pragma once

#include <cstdint>
#include <vector>

#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

class Node;
class Group;

// A cursor over a scene tree with an explicit stack of child positions, and the
// engine's one way of walking a tree: depth first, each node handled when the cursor
// arrives from above or from a sibling, each entered group handled once more when the
// cursor comes back up. Filters decide whether the cursor may enter a node at all,
// handlers do the work. The tree must not change during a walk.
class VELUN_EXPORT Traverser {
public:
    // Answers of handlers and filters.
    enum StatusResult {
        ResultContinue = 0,  // handler: ask the next one; filter: no decision
        ResultAccept = 1,    // handler: ask no further handler; filter: the node passes
        ResultStop = 2,      // handler: end the walk here; filter: as ResultContinue
        ResultSkip = 3       // handler: do not go below this node; filter: leave the node out
    };
    // How the cursor reached the node being handled.
    enum Direction {
        DirectionUp = 0,    // back into a group after its last reachable child
        DirectionDown = 1,  // from the parent, and the start node
        DirectionNext = 2,  // from the previous sibling
        DirectionPrev = 3   // from the next sibling
    };

    class VELUN_EXPORT Filter {
    public:
        virtual ~Filter();
        virtual StatusResult filter(Node& node) = 0;
    };

    class VELUN_EXPORT Handler {
    public:
        virtual ~Handler();
        // Once at the start of each walk.
        virtual void reset(Node& start) = 0;
        // `previous` is the node handled before, null for the first.
        virtual StatusResult handle(Node& node, Direction direction, Node* previous) = 0;
    };

    explicit Traverser(Node& root);
    virtual ~Traverser();

    Traverser(Traverser const&) = delete;
    Traverser& operator=(Traverser const&) = delete;

    // Handlers and filters are asked in the order they were added.
    void addHandler(Dorvan::SharedPtr<Handler> handler);
    void addFilter(Dorvan::SharedPtr<Filter> filter);
    Dorvan::SharedPtr<Filter> getFilter(unsigned int index) const { return mFilters.get(index); }
    Dorvan::Vector<Dorvan::SharedPtr<Filter>> getFilterList() const { return mFilters; }
    int getHandlerCount() const { return static_cast<int>(mHandlerList.size()); }
    int getFilterCount() const { return static_cast<int>(mFilterList.size()); }

    // The start node of a walk is then not handled on the way in.
    void setSkipRoot(bool skip) { mSkipRoot = skip; }
    bool doSkipRoot() const { return mSkipRoot; }

    Node* getCurrentNode() const { return mCurrent; }
    int getCurrentDepth() const { return static_cast<int>(mPositions.size()); }
    // Position of the current node among its siblings; the depth must not be 0.
    int getCurrentPos() const { return mPositions.back(); }
    bool isLeaf() const;
    // Children of the current node, -1 if it is no group.
    int getChildCount() const;
    int getMaxDepth() const { return mMaxDepth; }
    // No walk of the engine counts nodes: always 0, kept for the interface.
    int getNodeCount() const { return 0; }

    // Each move returns the new current node, or null with the cursor unchanged.
    // Into the first child from `position` on that passes the filters; -1 searches
    // backward from the last child.
    Node* moveDown(int position);
    // The argument has no effect; kept for the interface.
    Node* moveUp(bool = false);
    Node* nextSibling();
    Node* prevSibling();

    // Cursor back to the root with an empty stack and the maximum depth at 0. Nothing
    // records visited nodes, so `clearVisited` has no effect; kept for the interface.
    void reset(bool clearVisited);

    // Walks from the current node; maxDepth 0 means no limit. Returns the node at
    // which a handler stopped the walk, the start node if the handlers refused it, or
    // null when the walk ran to its end. Call reset(false) first to start at the root.
    Node* walk(int maxDepth, bool reverse);

private:
    // The walk's steps; hidden from the library's interface so that they inline.
    VELUN_NO_EXPORT bool isFiltered(Node* node) const;
    VELUN_NO_EXPORT int getSibling(Group* group, int position, bool backward) const;
    // The first answer other than ResultContinue, ResultAccept when every handler continued.
    VELUN_NO_EXPORT StatusResult handleNode(Node& node, Direction direction, Node* previous);
    VELUN_NO_EXPORT void resetHandler(Node& start);
    VELUN_NO_EXPORT static int getNodeChildCount(Node* node);
    VELUN_NO_EXPORT Node* stepDown(int position);
    VELUN_NO_EXPORT Node* stepUp();
    VELUN_NO_EXPORT Node* stepSideways(bool backward);

    bool mSkipRoot;
    Node* mRoot;
    int mMaxDepth;
    // Kept between walks, so that a walk allocates nothing once the tree's depth has
    // been seen.
    std::vector<int> mPositions;
    Dorvan::Vector<Dorvan::SharedPtr<Handler>> mHandlers;
    Dorvan::Vector<Dorvan::SharedPtr<Filter>> mFilters;
    // The same handlers and filters as plain pointers, kept alive by the lists above.
    std::vector<Handler*> mHandlerList;
    std::vector<Filter*> mFilterList;
    Node* mCurrent;
};

}  // namespace Velun
