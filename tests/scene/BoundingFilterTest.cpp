#include "scene/BoundingFilter.h"

#include <string>
#include <type_traits>

#include "SceneFixture.h"
#include "geometry/Drawable.h"
#include "geometry/Geometry.h"
#include "material/Material.h"
#include "scene/SceneRoot.h"

using namespace Velun;
using namespace SceneTest;
using Dorvan::SharedPtr;
typedef std::vector<std::string> Names;

namespace {

// A filter keeps only an address: a temporary volume must not compile.
static_assert(!std::is_constructible_v<BoundingFilter, BoundingBox>);

class DrawnLeaf : public BoxLeaf, public Drawable {
public:
    DrawnLeaf(std::string const& name, float x0, float y0, float x1, float y1)
        : BoxLeaf(Point(x0, y0, 0), Point(x1, y1, 1), name) {}
    SharedPtr<Material> const getMaterial(unsigned int) const override { return {}; }
    SharedPtr<Material> getMaterial(unsigned int) override { return {}; }
    SharedPtr<Geometry> const getGeometry(int) const override { return {}; }
    SharedPtr<Geometry> getGeometry(int) override { return {}; }
    BoundingVolume const* getBoundingVolume() const override { return BoxLeaf::getBoundingVolume(); }
};

// Every node a walk hands over, by name.
class NameRecorder : public Traverser::Handler {
public:
    void reset(Node&) override {}
    Traverser::StatusResult handle(Node& node, Traverser::Direction direction, Node*) override {
        if (direction != Traverser::DirectionUp)
            mNames.push_back(node.getName());
        return Traverser::ResultContinue;
    }
    Names mNames;
};

// Unit boxes "a" at x = -10 and "b", "c" at x = 10 and 12, an empty group, and a
// thin 4-wide plate lying along the diagonal x = y - 20, around (0, 20).
class BoundingFilterTest : public EngineTest {
protected:
    BoundingFilterTest() {
        Node* top = root.getRoot();
        chain({top, &left, &leftPlace, &a});
        chain({top, &right, &rightPlace, &rightGroup, &b});
        chain({&rightGroup, &c});
        chain({top, &empty});
        chain({top, &platePlace, &plate});
        leftPlace.translate(-10, 0, 0, false);
        rightPlace.translate(10, 0, 0, false);
        platePlace.rotateZ(0.785398f, false);
        platePlace.translate(0, 20, 0, false);
        root.getUpdateTraverser()->run(0);
    }

    Names handled(BoundingFilter const& filter) {
        Traverser walk(*root.getRoot());
        walk.setSkipRoot(true);
        SharedPtr<NameRecorder> recorder(new NameRecorder());
        walk.addFilter(SharedPtr<Traverser::Filter>(new BoundingFilter(filter)));
        walk.addHandler(recorder);
        walk.walk(0, false);
        return recorder->mNames;
    }
    Names collected(BoundingFilter const& filter) {
        Names names;
        for (Drawable* drawable : collectDrawables(*root.getRoot(), filter))
            names.push_back(dynamic_cast<Node*>(drawable)->getName());
        return names;
    }
    StartedEngine started;
    SceneRoot root{1};
    Branch left{"left"}, right{"right"}, empty{"empty"}, rightGroup{"rightGroup"};
    TransformationNode leftPlace{"leftPlace"}, rightPlace{"rightPlace"}, platePlace{"platePlace"};
    DrawnLeaf a{"a", 0, 0, 1, 1}, b{"b", 0, 0, 1, 1}, c{"c", 2, 0, 3, 1},
        plate{"plate", -2, -0.05f, 2, 0.05f};
};

TEST_F(BoundingFilterTest, OnlyTheSubtreesThatTouchTheQueryAreWalkedAlsoByPlacedAndOwnVolumes) {
    BoundingBox everywhere, nowhere, unit(Point(0, 0, 0), Point(1, 1, 1));
    everywhere.setInfinite();
    EXPECT_EQ(handled(BoundingFilter(Point(10.5f, 0.5f, 0.5f))),
              (Names{"right", "rightPlace", "rightGroup", "b"}));
    EXPECT_EQ(handled(BoundingFilter(Point(0, 5, 0))), Names{});
    EXPECT_EQ(handled(BoundingFilter(everywhere)), (Names{"left", "leftPlace", "a", "right", "rightPlace",
                                                          "rightGroup", "b", "c", "platePlace", "plate"}));
    EXPECT_EQ(handled(BoundingFilter(nowhere)), Names{});

    BoundingFilter filter;
    filter.setBoundingVolume(unit, turnedAndMoved(0, -10));
    filter.setPoint(Point(10.5f, 0.5f, 0.5f));
    EXPECT_EQ(collected(filter), Names{"a"});

    // The query box is 0.4 wide around (x, y); at (1, 19) it lies inside the plate's world
    // box but 1.4 away from the plate itself.
    struct Case {
        char const* name;
        float x, y;
        Names found, foundByOwnVolume;
    };
    Case const cases[] = {
        {"right side", 12.5f, 0.5f, {"c"}, {"c"}},
        {"plate's middle", 0, 20, {"plate"}, {"plate"}},
        {"plate's empty corner", 1, 19, {"plate"}, {}},
    };
    BoundingBox query(Point(-0.2f, -0.2f, -0.2f), Point(0.2f, 0.2f, 0.2f));
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        BoundingFilter filter;
        filter.setBoundingVolume(query, turnedAndMoved(0, c.x, c.y));
        EXPECT_EQ(collected(filter), c.found);
        filter.setTestDrawableVolumes(true);
        EXPECT_EQ(collected(filter), c.foundByOwnVolume);
        BoundingFilter point(Point(c.x, c.y, 0.5f));
        point.setTestDrawableVolumes(true);
        EXPECT_EQ(collected(point), c.foundByOwnVolume);
    }
}

}  // namespace
