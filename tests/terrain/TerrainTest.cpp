#include <cmath>
#include <limits>
#include <memory>
#include <set>
#include <sstream>
#include <tuple>

#include "TerrainFixture.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryElement.h"
#include "geometry/IndexData.h"
#include "scene/BoundingBox.h"
#include "scene/Branch.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"
#include "terrain/TerrainPatch.h"

namespace TerrainTest {

using Velun::Point;
using Velun::Terrain;

TEST_F(EngineTest, BadArgumentsMakeNothingAndTilesAreMadeOnceHoldingPointsUpToButNotOnTheFarEdges) {
    const struct {
        unsigned int patchLevel, tileLevel;
        float tileSize;
    } refused[] = {{3, 1, 0.0f}, {3, 1, std::numeric_limits<float>::quiet_NaN()}, {8, 8, 10.0f}};
    for (auto const& c : refused) {
        Terrain terrain(2, 2);
        std::ostringstream expected;
        expected << "Could not initialise terrain " << terrain.getNodeId() << ": tile size " << c.tileSize
                 << " must be above 0 and patch level " << c.patchLevel << " plus tile level " << c.tileLevel
                 << " at most 15\n";
        SCOPED_TRACE(expected.str());
        testing::internal::CaptureStderr();
        terrain.initializeTerrain(c.patchLevel, c.tileLevel, c.tileSize);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), expected.str());
        EXPECT_EQ(terrain.getTile(0, 0), nullptr);
        EXPECT_EQ(terrain.getAttachedChildCount(), 0);
        EXPECT_FLOAT_EQ(terrain.getSurfacePoint(Point(1, 0, 1))[1], -1.0f);
        terrain.updateTile(0, 0);
    }

    Terrain terrain(2, 2);
    terrain.initializeTerrain(3, 1, 100.0f);
    terrain.initializeTerrain(4, 2, 50.0f);
    terrain.updateTile(2, 0);
    EXPECT_EQ(terrain.getPatchCount(), 16u);
    EXPECT_EQ(terrain.getTile(2, 0), nullptr);
    // Tile by tile, row by row inside a tile.
    EXPECT_EQ(&terrain.getPatch(7)->getTerrainTile(), terrain.getTile(1, 0));
    EXPECT_EQ(terrain.getPatch(6)->getColumn(), 0u);
    EXPECT_EQ(terrain.getPatch(6)->getRow(), 1u);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        char const* name;
        float x, z;
        int tileX, tileY;  // -1: outside
        float u, v;
    } cases[] = {
        {"near corner", 0.0f, 0.0f, 0, 0, 0.0f, 0.0f},
        {"just before x = 0", -0.5f, 10.0f, -1, 0, 0, 0},
        {"middle of tile (1, 0)", 150.0f, 50.0f, 1, 0, 0.5f, 0.5f},
        {"on the inner border", 100.0f, 100.0f, 1, 1, 0.0f, 0.0f},
        {"just before the far x edge", 199.99f, 10.0f, 1, 0, 0.9999f, 0.1f},
        {"on the far x edge", 200.0f, 10.0f, -1, 0, 0, 0},
        {"on the far z edge", 50.0f, 200.0f, -1, 0, 0, 0},
        {"NaN x", nan, 10.0f, -1, 0, 0, 0},
        {"NaN z", 10.0f, nan, -1, 0, 0, 0},
        {"infinite", inf, 10.0f, -1, 0, 0, 0},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        Terrain::PointHandle handle = terrain.getPointHandle(Point(c.x, 3.0f, c.z));
        if (c.tileX < 0) {
            EXPECT_FALSE(handle.inTerrain());
            expectNear(terrain.getSurfacePoint(handle), Vec3(0, -1, 0), 0.0f);
            EXPECT_EQ(terrain.getNormal(handle)[1], 1.0f);
            EXPECT_EQ(terrain.getDistance(Point(c.x, 3.0f, c.z)), 0.0f);
            EXPECT_EQ(terrain.getSlope(Point(c.x, 3.0f, c.z)), -1.0f);
            continue;
        }
        ASSERT_TRUE(handle.inTerrain());
        EXPECT_EQ(handle.getTile(), terrain.getTile(c.tileX, c.tileY));
        EXPECT_NEAR(handle.getX(), c.u, 1e-4f);
        EXPECT_NEAR(handle.getY(), c.v, 1e-4f);
        // A flat tile without a height map lies at its offset.
        EXPECT_FLOAT_EQ(terrain.getDistance(handle), 3.0f);
    }
}

// One tile of the given levels and size, its heights from `map` up to `maxHeight`.
class TileTest : public EngineTest {
protected:
    void make(unsigned int patchLevel, unsigned int tileLevel, float size, float maxHeight,
              SharedPtr<Velun::TextureSource> map) {
        mTerrain.reset(new Terrain());
        mTerrain->initializeTerrain(patchLevel, tileLevel, size);
        tile().setMaxHeight(maxHeight);
        ASSERT_TRUE(tile().load(map));
    }
    Terrain::Tile& tile() { return *mTerrain->getTile(0, 0); }
    Point vertex(unsigned int index) {
        float const* v = static_cast<float const*>(tile().getVertexData()->getVertices()) + 3 * index;
        return Point(v[0], v[1], v[2]);
    }
    void TearDown() override {
        mTerrain.reset();
        EngineTest::TearDown();
    }
    std::unique_ptr<Terrain> mTerrain;
};

// Heights equal to the pixel values, one unit per pixel: a 3 x 3 map over a 2-unit tile
// whose first cell is a saddle. Then maps that cannot serve are refused, the old one kept.
TEST_F(TileTest, HeightsLieOnTheDrawnTrianglesAndMapsThatCannotServeAreRefused) {
    make(1, 0, 2.0f, 255.0f, grey(3, {0, 100, 20, 100, 0, 50, 60, 70, 255}));
    const struct {
        char const* name;
        float x, z, expected;
    } cases[] = {
        {"pixel", 1.0f, 0.0f, 100.0f},
        {"saddle, on the drawn diagonal", 0.5f, 0.5f, 100.0f},
        {"saddle, near triangle", 0.25f, 0.25f, 50.0f},
        {"saddle, far triangle", 0.6f, 0.6f, 80.0f},
        {"near triangle up to the diagonal", 1.25f, 1.75f, 65.0f},
        {"far triangle", 1.5f, 1.75f, 111.25f},
        {"last column", 1.99999f, 0.0f, 20.0f},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(mTerrain->getSurfacePoint(Point(c.x, 0, c.z))[1], c.expected, 1e-3f);
    }
    EXPECT_FLOAT_EQ(tile().getHeight(2.0f, -1.0f), tile().getHeight(1.0f, 0.0f));
    EXPECT_FLOAT_EQ(tile().getHeight(1.0f, 1.0f), 255.0f);
    EXPECT_FLOAT_EQ(tile().getHeight(std::nanf(""), 0.0f), 0.0f);
    // Across the drawn diagonal of the curved cell (1, 1), and at its far corner.
    const float eps = 1e-3f;
    expectNear(tile().getNormal(0.75f - eps, 0.75f - eps), tile().getNormal(0.75f + eps, 0.75f + eps), 0.01f);
    expectNear(tile().getNormal(1.0f - eps, 1.0f - eps), tile().getNormal(1.0f, 1.0f), 0.01f);
    // The far corner pixel: one-sided differences, averaged over the two rows (x) and
    // columns (z) that meet there: ((0 - 50) + (70 - 255)) / 2 and ((0 - 70) + (50 - 255)) / 2.
    expectNear(tile().getNormal(1.0f, 1.0f), Vec3(-117.5f, 1.0f, -137.5f).normalized());

    const std::string prefix = "Could not load the height map of terrain tile (0, 0): ";
    const struct {
        char const* name;
        SharedPtr<Velun::TextureSource> map;
        unsigned int offset, slice;
        std::string line;
    } refused[] = {
        {"offset past the pixel", grey(2, {1, 2, 3, 4}), 1, 0,
         prefix + "byte offset 1 lies outside a pixel of 1 bytes"},
        {"16-bit value across the pixel's end", makeImage<unsigned short>(2, 2, 1, {1, 2, 3, 4}), 1, 0,
         prefix + "byte offset 1 lies outside a pixel of 2 bytes"},
        {"missing slice", grey(2, {1, 2, 3, 4}), 0, 1,
         prefix + "slice 1 of a 2 x 2 x 1 image holds no pixels"},
        {"empty image", grey(0, {}), 0, 0, prefix + "slice 0 of a 0 x 0 x 1 image holds no pixels"},
        {"float pixels", makeImage<float>(2, 2, 1, {1, 2, 3, 4}), 0, 0, "Unsupported format: Float"},
    };
    for (auto const& c : refused) {
        SCOPED_TRACE(c.name);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(tile().load(c.map, c.offset, c.slice));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), c.line + "\n");
        EXPECT_FLOAT_EQ(tile().getHeight(0.5f, 0.0f), 100.0f);
    }
    // A map of two 16-bit channels, the heights in the second, read at their byte offset.
    tile().setOffset(2.0f);
    tile().setMaxHeight(10.0f);
    ASSERT_TRUE(tile().load(makeImage<unsigned short>(2, 2, 2, {9, 0, 9, 65535, 9, 65535, 9, 0}), 2, 0));
    EXPECT_FLOAT_EQ(tile().getHeight(0.0f, 0.0f), 2.0f);
    EXPECT_FLOAT_EQ(tile().getHeight(0.5f, 0.5f), 12.0f);
    EXPECT_FLOAT_EQ(tile().getHeight(0.75f, 0.75f), 7.0f);
}

// n = 8 vertices per edge over two patches per edge, on a map of 8 x 8 pixels.
TEST_F(TileTest, PatchesCoverEveryCellWithTheTrianglesTheQueriesUseAndFollowANewMap) {
    std::vector<unsigned char> bumps;
    for (unsigned int i = 0; i < 64; ++i)
        bumps.push_back(static_cast<unsigned char>((i * 97 + (i / 8) * 31) % 256));
    make(2, 1, 7.0f, 20.0f, grey(8, bumps));
    EXPECT_EQ(mTerrain->getPatch(0)->getGeometry(0)->getElementGroups().size(), 0u);
    tile().setEnabled(true);
    tile().updateTile();
    ASSERT_EQ(tile().getVertexData()->getCount(), 64u);
    std::set<std::tuple<unsigned int, unsigned int, unsigned int>> triangles;
    for (unsigned int p = 0; p < mTerrain->getPatchCount(); ++p) {
        ASSERT_EQ(mTerrain->getPatch(p)->getGeometry(0)->getElementGroups().size(), 1u);
        Velun::GeometryElement* element =
            mTerrain->getPatch(p)->getGeometry(0)->getElementGroups()[0]->getElementList(0)[0];
        auto const& indices =
            static_cast<Velun::IndexData const&>(dynamic_cast<Velun::IndexElement*>(element)->getIndexList());
        for (unsigned int i = 2; i < indices.getCount(); ++i) {
            unsigned int a = indices.getIndex(i - 2), b = indices.getIndex(i - 1), c = indices.getIndex(i);
            if (a == b || b == c || a == c)
                continue;
            Point pa = vertex(a), pb = vertex(b), pc = vertex(c);
            // Facing up whatever the strip's parity.
            float up = (pb[2] - pa[2]) * (pc[0] - pa[0]) - (pb[0] - pa[0]) * (pc[2] - pa[2]);
            EXPECT_GT(i % 2 ? -up : up, 0.0f) << "patch " << p << " index " << i;
            Point centre((pa[0] + pb[0] + pc[0]) / 3, 0, (pa[2] + pb[2] + pc[2]) / 3);
            EXPECT_NEAR(mTerrain->getSurfacePoint(centre)[1], (pa[1] + pb[1] + pc[1]) / 3, 1e-4f);
            std::set<unsigned int> sorted = {a, b, c};
            triangles.insert(std::make_tuple(*sorted.begin(), *std::next(sorted.begin()), *sorted.rbegin()));
        }
    }
    EXPECT_EQ(triangles.size(), 2u * 7u * 7u);
    Velun::BoundingBox const& box =
        static_cast<Velun::BoundingBox const&>(*mTerrain->getPatch(3)->getBoundingVolume());
    EXPECT_FLOAT_EQ(box.getMax()[1], 20.0f);  // its top; its sides show in the drawing tests

    // A new map: the patches take the new vertices.
    ASSERT_TRUE(tile().getSlopeMap());  // made for the bumps, when first asked
    ASSERT_TRUE(tile().load(grey(2, {255, 255, 255, 255})));
    tile().updateTile();
    // One byte per vertex, 255 where the ground is level; made anew for the new heights.
    EXPECT_EQ(*static_cast<unsigned char const*>(tile().getSlopeMap()->getPixel(7, 7, 0)), 255);
    for (unsigned int p = 0; p < mTerrain->getPatchCount(); ++p)
        EXPECT_EQ(mTerrain->getPatch(p)->getGeometry(0)->getIndexedDataSet(0), tile().getVertexData().get());
    EXPECT_FLOAT_EQ(vertex(63)[1], 20.0f);
}

// A ramp rising one unit per unit along the tile's x, heights 0 to 4 over 4 units,
// under a transformation node.
TEST_F(TileTest, RampAnswersFollowTheTerrainNode) {
    std::vector<unsigned char> ramp;
    for (int i = 0; i < 25; ++i)
        ramp.push_back(static_cast<unsigned char>(51 * (i % 5)));
    make(2, 0, 4.0f, 5.0f, grey(5, ramp));
    Velun::SceneGraph& scene = core.getSceneManager().createSceneGraph();
    Velun::TransformationNode place;
    place.setChild(*mTerrain);
    scene.getRoot()->attachChild(place);
    std::int64_t time = 1000;
    const float r = 1.0f / std::sqrt(2.0f);
    const float s = 1.0f / std::sqrt(1.0f + 1.5f * 1.5f);
    const struct {
        char const* name;
        int transform;  // 0 none, 1 translated, 2 turned 90 degrees about y, 3 scaled
        Point query;
        Point ground;
        Vec3 normal;
    } cases[] = {
        {"in place, interior", 0, Point(2.5f, 9, 2), Point(2.5f, 2.5f, 2), {-r, r, 0}},
        {"in place, corner pixel", 0, Point(0, 9, 0), Point(0, 0, 0), {-r, r, 0}},
        {"translated, below ground", 1, Point(12, 6, -18), Point(12, 7, -18), {-r, r, 0}},
        {"turned", 2, Point(1, 9, -2), Point(1, 2, -2), {0, r, r}},
        {"scaled", 3, Point(4, 9, 2), Point(4, 6, 2), {-1.5f * s, s, 0}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        place.reset();
        if (c.transform == 1)
            place.translate(10, 5, -20, false);
        else if (c.transform == 2)
            place.rotateY(float(M_PI) / 2, false);
        else if (c.transform == 3)
            place.scale(2, 3, 2, false);
        scene.getUpdateTraverser()->run(time += 20);
        expectNear(mTerrain->getSurfacePoint(c.query), c.ground);
        expectNear(mTerrain->getNormal(c.query), c.normal);
        EXPECT_NEAR(mTerrain->getDistance(c.query), c.query[1] - c.ground[1], 1e-4f);
        EXPECT_NEAR(mTerrain->getSlope(c.query), float(M_PI) / 4, 1e-4f);
    }
}

}  // namespace TerrainTest
