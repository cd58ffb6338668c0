#pragma once

#include <cstdint>
#include <vector>

#include "scene/Traverser.h"
#include "velun_export.h"

namespace Velun {

class SceneRoot;

// The per-frame update pass of a scene. World transformations flow down as the
// cursor descends and world volumes are merged upward as it returns; a group in
// which nothing changed, under a parent that did not move, is not entered, so the
// cost of a pass follows what changed. After a pass every group's world volume
// encloses those of all its children. The pass allocates nothing once it has seen
// the depth of the tree.
//
// While the pass has only its own handler and no filter, run() takes a walk of its
// own that makes the same calls in the same order without the general traverser's
// dispatch; handlers or filters added by the application get the general walk.
class VELUN_EXPORT UpdateTraverser : public Traverser {
public:
    class VELUN_EXPORT UpdateHandler : public Handler {
    public:
        // With calcInverse the pass also computes world inverses; otherwise they are
        // computed when first read.
        UpdateHandler(UpdateTraverser* traverser, bool calcInverse);
        ~UpdateHandler() override;

        void reset(Node& start) override;
        StatusResult handle(Node& node, Direction direction, Node* previous) override;

        bool doCalcInverse() const { return mCalcInverse; }
        void setCalcInverse(bool calcInverse) { mCalcInverse = calcInverse; }

    private:
        UpdateTraverser* mTraverser;
        bool mCalcInverse;
    };

    // Lets through only nodes that are not finished by the update pass.
    class VELUN_EXPORT ModifiedFilter : public Filter {
    public:
        ~ModifiedFilter() override;
        StatusResult filter(Node& node) override;
    };

    // The pass over the scene's root.
    explicit UpdateTraverser(SceneRoot& root);
    // The pass over any tree. Its root keeps its own world transformation, and its
    // volume is not reset: children's volumes are merged into it.
    explicit UpdateTraverser(Node& root);
    ~UpdateTraverser() override;

    // One pass from the root; the timestamp plays no part. Returns 0.
    int run(std::int64_t timestamp);

    SceneRoot* getSceneRoot() const { return mSceneRoot; }
    UpdateHandler& getUpdateHandler() const { return *mHandler; }

private:
    struct Step {
        Group* mGroup;
        int mPosition;
    };
    VELUN_NO_EXPORT void runAlone();

    SceneRoot* mSceneRoot;
    Node* mRoot;
    Dorvan::SharedPtr<UpdateHandler> mHandler;
    // The groups above the one being walked, kept between passes.
    std::vector<Step> mPath;
};

}  // namespace Velun
