#include <cmath>
#include <limits>
#include <sstream>

#include "TerrainFixture.h"
#include "scene/Branch.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"
#include "terrain/TerrainPatch.h"

namespace TerrainTest {

using Velun::Point;
using Velun::Terrain;

TEST_F(EngineTest, InitializeMakesTilesAndPatchesOnce) {
    Terrain terrain(2, 2);
    EXPECT_EQ(terrain.getTile(0, 0), nullptr);
    terrain.initializeTerrain(3, 1, 100.0f);
    terrain.initializeTerrain(4, 2, 50.0f);
    terrain.updateTile(2, 0);
    EXPECT_EQ(terrain.getPatchCount(), 16u);
    ASSERT_NE(terrain.getTile(1, 1), nullptr);
    EXPECT_EQ(terrain.getTile(2, 0), nullptr);
    EXPECT_EQ(terrain.getTile(1, 1)->getVertexNumPerEdge(), 16u);
    // Tile by tile, row by row inside a tile.
    EXPECT_EQ(&terrain.getPatch(7)->getTerrainTile(), terrain.getTile(1, 0));
    EXPECT_EQ(terrain.getPatch(6)->getColumn(), 0u);
    EXPECT_EQ(terrain.getPatch(6)->getRow(), 1u);
}

TEST_F(EngineTest, RefusedArgumentsLogOneLineAndMakeNothing) {
    struct Case {
        unsigned int patchLevel, tileLevel;
        float tileSize;
        char const* text;
    };
    const Case cases[] = {
        {3, 1, 0.0f, "tile size 0 must be above 0 and patch level 3 plus tile level 1 at most 15"},
        {3, 1, std::numeric_limits<float>::quiet_NaN(),
         "tile size nan must be above 0 and patch level 3 plus tile level 1 at most 15"},
        {8, 8, 10.0f, "tile size 10 must be above 0 and patch level 8 plus tile level 8 at most 15"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.text);
        Terrain terrain(2, 2);
        testing::internal::CaptureStderr();
        terrain.initializeTerrain(c.patchLevel, c.tileLevel, c.tileSize);
        std::ostringstream expected;
        expected << "Could not initialise terrain " << terrain.getNodeId() << ": " << c.text << "\n";
        EXPECT_EQ(testing::internal::GetCapturedStderr(), expected.str());
        EXPECT_EQ(terrain.getTile(0, 0), nullptr);
        EXPECT_EQ(terrain.getAttachedChildCount(), 0);
        EXPECT_FLOAT_EQ(terrain.getSurfacePoint(Point(1, 0, 1))[1], -1.0f);
        terrain.updateTile(0, 0);
    }
}

TEST_F(EngineTest, PointsAreLocatedOnTilesUpToButNotOnTheFarEdges) {
    Terrain terrain(2, 2);
    terrain.initializeTerrain(3, 1, 100.0f);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    struct Case {
        char const* name;
        float x, z;
        int tileX, tileY;  // -1: outside
        float u, v;
    };
    const Case cases[] = {
        {"near corner", 0.0f, 0.0f, 0, 0, 0.0f, 0.0f},
        {"just before x = 0", -0.5f, 10.0f, -1, 0, 0, 0},
        {"middle of tile (1, 0)", 150.0f, 50.0f, 1, 0, 0.5f, 0.5f},
        {"on the inner border", 100.0f, 100.0f, 1, 1, 0.0f, 0.0f},
        {"just before the far x edge", 199.99f, 10.0f, 1, 0, 0.9999f, 0.1f},
        {"on the far x edge", 200.0f, 10.0f, -1, 0, 0, 0},
        {"on the far z edge", 50.0f, 200.0f, -1, 0, 0, 0},
        {"far beyond", 1e10f, 10.0f, -1, 0, 0, 0},
        {"NaN x", nan, 10.0f, -1, 0, 0, 0},
        {"NaN z", 10.0f, nan, -1, 0, 0, 0},
        {"infinite", inf, 10.0f, -1, 0, 0, 0},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        Terrain::PointHandle handle = terrain.getPointHandle(Point(c.x, 3.0f, c.z));
        if (c.tileX < 0) {
            EXPECT_FALSE(handle.inTerrain());
            Point ground = terrain.getSurfacePoint(handle);
            EXPECT_TRUE(ground[0] == 0.0f && ground[1] == -1.0f && ground[2] == 0.0f);
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

// A ramp rising one unit per unit along the tile's x: heights 0 to 4 over 4 units.
class RampTerrainTest : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        std::vector<unsigned char> ramp;
        for (int i = 0; i < 25; ++i)
            ramp.push_back(static_cast<unsigned char>(51 * (i % 5)));
        mScene = &Velun::VelunCore::getSingleton().getSceneManager().createSceneGraph();
        mTerrain = new Terrain(1, 1);
        mTerrain->initializeTerrain(2, 0, 4.0f);
        mTerrain->getTile(0, 0)->setMaxHeight(5.0f);
        ASSERT_TRUE(mTerrain->getTile(0, 0)->load(grey(5, ramp)));
        mPlace = new Velun::TransformationNode();
        mPlace->setChild(*mTerrain);
        mScene->getRoot()->attachChild(*mPlace);
    }
    void TearDown() override {
        delete mPlace;
        delete mTerrain;
        EngineTest::TearDown();
    }
    void update() { mScene->getUpdateTraverser()->run(mTime += 20); }

    Velun::SceneGraph* mScene = nullptr;
    Terrain* mTerrain = nullptr;
    Velun::TransformationNode* mPlace = nullptr;
    std::int64_t mTime = 1000;
};

TEST_F(RampTerrainTest, AnswersFollowTheTerrainNode) {
    const float r = 1.0f / std::sqrt(2.0f);
    const float s = 1.0f / std::sqrt(1.0f + 1.5f * 1.5f);
    struct Case {
        char const* name;
        int transform;  // 0 none, 1 translated, 2 turned 90 degrees about y, 3 scaled
        Point query;
        Point ground;
        float normal[3];
    };
    const Case cases[] = {
        {"in place, interior", 0, Point(2.5f, 9, 2), Point(2.5f, 2.5f, 2), {-r, r, 0}},
        {"in place, border row", 0, Point(2, 9, 0), Point(2, 2, 0), {-r, r, 0}},
        {"in place, corner pixel", 0, Point(0, 9, 0), Point(0, 0, 0), {-r, r, 0}},
        {"translated", 1, Point(12, 9, -18), Point(12, 7, -18), {-r, r, 0}},
        {"turned", 2, Point(1, 9, -2), Point(1, 2, -2), {0, r, r}},
        {"scaled", 3, Point(4, 9, 2), Point(4, 6, 2), {-1.5f * s, s, 0}},
        {"below ground", 1, Point(12, 6, -18), Point(12, 7, -18), {-r, r, 0}},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        mPlace->reset();
        if (c.transform == 1)
            mPlace->translate(10, 5, -20, false);
        else if (c.transform == 2)
            mPlace->rotateY(float(M_PI) / 2, false);
        else if (c.transform == 3)
            mPlace->scale(2, 3, 2, false);
        update();
        Point ground = mTerrain->getSurfacePoint(c.query);
        Dorvan::TVector<float, 3> normal = mTerrain->getNormal(c.query);
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(ground[i], c.ground[i], 1e-4f) << i;
            EXPECT_NEAR(normal[i], c.normal[i], 1e-4f) << i;
        }
        EXPECT_NEAR(mTerrain->getDistance(c.query), c.query[1] - c.ground[1], 1e-4f);
        EXPECT_NEAR(mTerrain->getSlope(c.query), float(M_PI) / 4, 1e-4f);
    }
}

}  // namespace TerrainTest
