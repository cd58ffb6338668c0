// Update pass and culling walk on a scene of about 100,000 nodes: 10 zones of 10
// sectors, each sector with 10 TransformationNodes, each holding a group of 100 leaves
// with small boxes. Times per node are for the whole tree (102,111 nodes).
//   update_unchanged      a pass when nothing changed
//   update_one_moved      one leaf's TransformationNode moved, then a pass
//   update_all_moved      every TransformationNode moved (moves untimed), then a pass
//   cull_walk             a walk with a filter that tests each node's world box
//                         against a frustum that sees about half of the scene
//   point_query           a walk with a BoundingFilter for a point inside one leaf;
//                         target: under 20 us
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

#include "core/VelunCore.h"
#include "scene/BoundingBox.h"
#include "scene/BoundingFilter.h"
#include "scene/Branch.h"
#include "scene/Frustrum.h"
#include "scene/Leaf.h"
#include "scene/SceneRoot.h"
#include "scene/Transformation.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"

using namespace Velun;

namespace {

class BoxLeaf : public Leaf {
public:
    BoxLeaf(float x, float z) : Leaf(TypeObject), mBox(Point(x, 0, z), Point(x + 0.5f, 0.5f, z + 0.5f)) {}
    BoundingVolume const* getBoundingVolume() const override { return &mBox; }

private:
    BoundingBox mBox;
};

// Culls like the view filter of a perspective view.
class CullFilter : public Traverser::Filter {
public:
    explicit CullFilter(Frustrum const& frustrum) : mFrustrum(frustrum) {}
    Traverser::StatusResult filter(Node& node) override {
        return node.getTransformedNode().getBoundingVolume().getFrustrumDistance(mFrustrum) < 0.0f
                   ? Traverser::ResultSkip
                   : Traverser::ResultContinue;
    }

private:
    Frustrum const& mFrustrum;
};

class CountHandler : public Traverser::Handler {
public:
    CountHandler() : mCount(0) {}
    void reset(Node&) override { mCount = 0; }
    Traverser::StatusResult handle(Node&, Traverser::Direction direction, Node*) override {
        if (direction != Traverser::DirectionUp)
            ++mCount;
        return Traverser::ResultContinue;
    }
    long mCount;
};

struct Scene {
    Scene() : root(1), nodeCount(1) {
        // Nodes are made in walking order, as a loader would make them.
        for (int zone = 0; zone < 10; ++zone) {
            Branch* z = make<Branch>();
            root.getRoot()->attachChild(*z);
            for (int sector = 0; sector < 10; ++sector) {
                Branch* s = make<Branch>();
                z->attachChild(*s);
                for (int t = 0; t < 10; ++t) {
                    TransformationNode* place = make<TransformationNode>();
                    place->translate(zone * 100.0f + t * 10.0f, 0.0f, -sector * 100.0f, false);
                    place->rotateY(0.01f * t, true);
                    s->attachChild(*place);
                    places.push_back(place);
                    Branch* group = make<Branch>();
                    place->setChild(*group);
                    for (int i = 0; i < 100; ++i)
                        group->attachChild(
                            *make<BoxLeaf>(static_cast<float>(i % 10), static_cast<float>(i / 10)));
                }
            }
        }
        root.getUpdateTraverser()->run(0);
    }
    ~Scene() {
        for (auto it = nodes.rbegin(); it != nodes.rend(); ++it)
            it->reset();
    }

    template <class T, class... A>
    T* make(A... args) {
        T* node = new T(args...);
        nodes.emplace_back(node);
        ++nodeCount;
        return node;
    }

    SceneRoot root;
    std::vector<std::unique_ptr<Node>> nodes;
    std::vector<TransformationNode*> places;
    long nodeCount;
};

Scene& scene() {
    static bool started = (VelunCore::getSingleton().startup(), true);
    (void)started;
    static Scene instance;
    return instance;
}

void setPerNode(benchmark::State& state, long nodes) {
    state.counters["per_node"] =
        benchmark::Counter(static_cast<double>(nodes),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["nodes"] = static_cast<double>(nodes);
}

void update_unchanged(benchmark::State& state) {
    Scene& s = scene();
    UpdateTraverser& pass = *s.root.getUpdateTraverser();
    pass.run(0);
    for (auto _ : state)
        pass.run(0);
    setPerNode(state, s.nodeCount);
}
BENCHMARK(update_unchanged);

void update_one_moved(benchmark::State& state) {
    Scene& s = scene();
    UpdateTraverser& pass = *s.root.getUpdateTraverser();
    TransformationNode& place = *s.places[555];
    pass.run(0);
    float step = 0.001f;
    for (auto _ : state) {
        place.translate(step, 0.0f, 0.0f, false);
        step = -step;
        pass.run(0);
    }
    setPerNode(state, s.nodeCount);
}
BENCHMARK(update_one_moved);

void update_all_moved(benchmark::State& state) {
    Scene& s = scene();
    UpdateTraverser& pass = *s.root.getUpdateTraverser();
    float step = 0.001f;
    for (auto _ : state) {
        state.PauseTiming();
        for (TransformationNode* place : s.places)
            place->translate(step, 0.0f, 0.0f, false);
        step = -step;
        state.ResumeTiming();
        pass.run(0);
    }
    setPerNode(state, s.nodeCount);
}
BENCHMARK(update_all_moved)->Unit(benchmark::kMicrosecond);

void cull_walk(benchmark::State& state) {
    Scene& s = scene();
    s.root.getUpdateTraverser()->run(0);
    // From the middle of the scene's near edge, turned 45 degrees to the right: the
    // left plane runs along -Z through the middle, so the half with x above 500 is seen.
    Transformation camera;
    camera.rotateY(static_cast<float>(-M_PI / 4), false);
    camera.translate(500.0f, 0.25f, 20.0f, false);
    Frustrum frustrum(camera.getInverseTransformation(), CameraSettings::Perspective,
                      CameraSettings::AspectFixed, 0.1, 5000.0, 90.0f, 90.0f, 1.0f);
    Traverser walk(*s.root.getRoot());
    Dorvan::SharedPtr<CountHandler> counter(new CountHandler());
    walk.addFilter(Dorvan::SharedPtr<Traverser::Filter>(new CullFilter(frustrum)));
    walk.addHandler(counter);
    for (auto _ : state) {
        walk.reset(false);
        walk.walk(0, false);
    }
    state.counters["visited"] = static_cast<double>(counter->mCount);
    setPerNode(state, s.nodeCount);
}
BENCHMARK(cull_walk)->Unit(benchmark::kMicrosecond);

// Inside one leaf of the middle of the scene: the walk tests the children of every
// group it enters (about 130 filter calls) and handles the few nodes on the path.
void point_query(benchmark::State& state) {
    Scene& s = scene();
    s.root.getUpdateTraverser()->run(0);
    Traverser walk(*s.root.getRoot());
    Dorvan::SharedPtr<CountHandler> counter(new CountHandler());
    walk.addFilter(Dorvan::SharedPtr<Traverser::Filter>(new BoundingFilter(Point(554.4f, 0.25f, -296.97f))));
    walk.addHandler(counter);
    for (auto _ : state) {
        walk.reset(false);
        walk.walk(0, false);
    }
    state.counters["visited"] = static_cast<double>(counter->mCount);
}
BENCHMARK(point_query)->Unit(benchmark::kMicrosecond);

}  // namespace
