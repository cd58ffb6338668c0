#include "scene/BoundingFilter.h"

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "SceneFixture.h"
#include "geometry/Drawable.h"
#include "geometry/Geometry.h"
#include "material/Material.h"
#include "scene/SceneRoot.h"
#include "scene/Transformation.h"
#include "scene/UpdateTraverser.h"

using namespace Velun;
using SceneTest::BoxLeaf;

namespace {

typedef Dorvan::Matrix<float, 4> Matrix4;

// A filter keeps only an address: a temporary volume must not compile.
template <class V, class = void>
struct TakesVolume : std::false_type {};
template <class V>
struct TakesVolume<
    V, std::void_t<decltype(std::declval<BoundingFilter&>().setBoundingVolume(std::declval<V>()))>>
    : std::true_type {};
static_assert(TakesVolume<BoundingBox const&>::value && !TakesVolume<BoundingBox>::value);
static_assert(!std::is_constructible_v<BoundingFilter, BoundingBox>);

class DrawnLeaf : public BoxLeaf, public Drawable {
public:
    DrawnLeaf(std::string const& name, Point const& min, Point const& max) : BoxLeaf(min, max, name) {}
    Dorvan::SharedPtr<Material> const getMaterial(unsigned int) const override { return {}; }
    Dorvan::SharedPtr<Material> getMaterial(unsigned int) override { return {}; }
    Dorvan::SharedPtr<Geometry> const getGeometry(int) const override { return {}; }
    Dorvan::SharedPtr<Geometry> getGeometry(int) override { return {}; }
    BoundingVolume const* getBoundingVolume() const override { return BoxLeaf::getBoundingVolume(); }
};

class NameRecorder : public Traverser::Handler {
public:
    void reset(Node&) override { mNames.clear(); }
    Traverser::StatusResult handle(Node& node, Traverser::Direction direction, Node*) override {
        if (direction != Traverser::DirectionUp)
            mNames.push_back(node.getName());
        return Traverser::ResultContinue;
    }
    std::vector<std::string> mNames;
};

Matrix4 translation(float x, float y) {
    Transformation t;
    t.translate(x, y, 0, false);
    return t.getLocalTransformation();
}

// Unit boxes "a" at x = -10 and "b", "c" at x = 10 and 12, an empty group, and a
// thin 4 x 4 plate standing diagonally at y = 20, turned 45 degrees about z.
struct Scene {
    Scene() : root(1) {
        Branch& top = *root.getRoot();
        top.attachChild(left);
        top.attachChild(right);
        top.attachChild(empty);
        top.attachChild(platePlace);
        left.attachChild(leftPlace);
        leftPlace.setChild(a);
        leftPlace.translate(-10, 0, 0, false);
        right.attachChild(rightPlace);
        rightPlace.setChild(rightGroup);
        rightPlace.translate(10, 0, 0, false);
        rightGroup.attachChild(b);
        rightGroup.attachChild(c);
        platePlace.setChild(plate);
        platePlace.rotateZ(0.785398f, false);
        platePlace.translate(0, 20, 0, false);
        root.getUpdateTraverser()->run(0);
    }
    ~Scene() { root.getRoot()->detachChilds(); }

    SceneRoot root;
    Branch left{"left"}, right{"right"}, empty{"empty"}, rightGroup{"rightGroup"};
    TransformationNode leftPlace{"leftPlace"}, rightPlace{"rightPlace"}, platePlace{"platePlace"};
    DrawnLeaf a{"a", Point(0, 0, 0), Point(1, 1, 1)}, b{"b", Point(0, 0, 0), Point(1, 1, 1)},
        c{"c", Point(2, 0, 0), Point(3, 1, 1)}, plate{"plate", Point(-2, -0.05f, -2), Point(2, 0.05f, 2)};
};

class BoundingFilterTest : public SceneTest::EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        mScene.reset(new Scene());
    }
    void TearDown() override {
        mScene.reset();
        EngineTest::TearDown();
    }
    std::vector<std::string> handled(BoundingFilter const& filter) {
        Traverser walk(*mScene->root.getRoot());
        walk.setSkipRoot(true);
        Dorvan::SharedPtr<NameRecorder> recorder(new NameRecorder());
        walk.addFilter(Dorvan::SharedPtr<Traverser::Filter>(new BoundingFilter(filter)));
        walk.addHandler(recorder);
        walk.walk(0, false);
        return recorder->mNames;
    }
    std::vector<std::string> collected(BoundingFilter const& filter) {
        std::vector<std::string> names;
        for (Drawable* drawable : collectDrawables(*mScene->root.getRoot(), filter))
            names.push_back(dynamic_cast<Node*>(drawable)->getName());
        return names;
    }

    std::unique_ptr<Scene> mScene;
};

typedef std::vector<std::string> Names;

TEST_F(BoundingFilterTest, PointQueriesEnterOnlyTheSubtreeHoldingThePoint) {
    EXPECT_EQ(handled(BoundingFilter(Point(10.5f, 0.5f, 0.5f))),
              (Names{"right", "rightPlace", "rightGroup", "b"}));
    EXPECT_EQ(handled(BoundingFilter(Point(-9.5f, 0.5f, 0.5f))), (Names{"left", "leftPlace", "a"}));
    EXPECT_EQ(handled(BoundingFilter(Point(0, 5, 0))), Names{});

    BoundingBox everywhere, nowhere;
    everywhere.setInfinite();
    EXPECT_EQ(handled(BoundingFilter(everywhere)), (Names{"left", "leftPlace", "a", "right", "rightPlace",
                                                          "rightGroup", "b", "c", "platePlace", "plate"}));
    EXPECT_EQ(handled(BoundingFilter(nowhere)), Names{});

    BoundingBox unit(Point(0, 0, 0), Point(1, 1, 1));
    BoundingFilter filter(unit);
    filter.setBoundingVolume(unit, translation(-10, 0));
    filter.setPoint(Point(10.5f, 0.5f, 0.5f));
    EXPECT_EQ(collected(filter), Names{"a"});
}

TEST_F(BoundingFilterTest, VolumesPlacedByAMatrixAndTheDrawablesOwnVolumes) {
    struct Case {
        char const* name;
        float x, y;
        Names found, foundByOwnVolume;
    };
    // The query box is 0.4 wide around (x, y); at (1, 19) it lies inside the plate's
    // world box but 1.4 away from the plate itself.
    Case const cases[] = {
        {"left side", -9.5f, 0.5f, {"a"}, {"a"}},
        {"right side", 12.5f, 0.5f, {"c"}, {"c"}},
        {"plate's middle", 0, 20, {"plate"}, {"plate"}},
        {"plate's empty corner", 1, 19, {"plate"}, {}},
    };
    BoundingBox query(Point(-0.2f, -0.2f, -0.2f), Point(0.2f, 0.2f, 0.2f));
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        BoundingFilter filter;
        filter.setBoundingVolume(query, translation(c.x, c.y));
        EXPECT_EQ(collected(filter), c.found);
        filter.setTestDrawableVolumes(true);
        EXPECT_EQ(collected(filter), c.foundByOwnVolume);
        filter = BoundingFilter(Point(c.x, c.y, 0.5f));
        filter.setTestDrawableVolumes(true);
        EXPECT_EQ(collected(filter).size(), c.foundByOwnVolume.size());
    }
}

}  // namespace
