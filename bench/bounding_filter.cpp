// Calls of BoundingFilter::filter on placed nodes, half of which the query touches:
// targets are 20 million calls per second for point and box queries and 10 million
// with a matrix (items_per_second). The point query over the 100,000-node scene is
// point_query in bench_scene_update.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "core/VelunCore.h"
#include "scene/BoundingBox.h"
#include "scene/BoundingFilter.h"
#include "scene/Branch.h"
#include "scene/Leaf.h"
#include "scene/SceneRoot.h"
#include "scene/Transformation.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"

using namespace Velun;

namespace {

class BoxLeaf : public Leaf {
public:
    BoxLeaf() : Leaf(TypeObject), mBox(Point(0, 0, 0), Point(1, 1, 1)) {}
    BoundingVolume const* getBoundingVolume() const override { return &mBox; }

private:
    BoundingBox mBox;
};

// 16 unit boxes in a row along x, at 0, 2, 4, ... 30, each turned a little.
struct Row {
    static int const Count = 16;
    Row() : root(1) {
        for (int i = 0; i < Count; ++i) {
            places.emplace_back(new TransformationNode());
            leaves.emplace_back(new BoxLeaf());
            places[i]->setChild(*leaves[i]);
            places[i]->translate(2.0f * i, 0.0f, 0.0f, false);
            places[i]->rotateY(0.1f, true);
            root.getRoot()->attachChild(*places[i]);
        }
        root.getUpdateTraverser()->run(0);
    }
    ~Row() { root.getRoot()->detachChilds(); }

    SceneRoot root;
    std::vector<std::unique_ptr<TransformationNode>> places;
    std::vector<std::unique_ptr<BoxLeaf>> leaves;
};

Row& row() {
    static bool started = (VelunCore::getSingleton().startup(), true);
    (void)started;
    static Row instance;
    return instance;
}

void run(benchmark::State& state, BoundingFilter& filter) {
    Row& r = row();
    long passed = 0;
    for (auto _ : state)
        for (auto& leaf : r.leaves)
            passed += filter.filter(*leaf) == Traverser::ResultContinue;
    state.SetItemsProcessed(state.iterations() * Row::Count);
    state.counters["passed"] = static_cast<double>(passed) / static_cast<double>(state.iterations());
}

void filter_point(benchmark::State& state) {
    BoundingFilter filter(Point(0.5f, 0.5f, 0.5f));
    run(state, filter);
}
BENCHMARK(filter_point);

// A box as long as half the row.
void filter_box(benchmark::State& state) {
    BoundingBox query(Point(0, 0, 0), Point(15, 1, 1));
    BoundingFilter filter(query);
    run(state, filter);
}
BENCHMARK(filter_box);

// The same box given in a frame turned half a turn about y and moved back onto the row.
void filter_box_matrix(benchmark::State& state) {
    BoundingBox query(Point(-15, 0, -1), Point(0, 1, 0));
    Transformation place;
    place.rotateY(3.14159265f, false);
    BoundingFilter filter;
    filter.setBoundingVolume(query, place.getLocalTransformation());
    run(state, filter);
}
BENCHMARK(filter_box_matrix);

}  // namespace
