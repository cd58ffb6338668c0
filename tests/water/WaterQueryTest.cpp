#include <gtest/gtest.h>

#include <cmath>

#include "scene/Branch.h"
#include "scene/SceneRoot.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"
#include "support/Engine.h"
#include "terrain/TerrainFixture.h"
#include "water/Water.h"

using TerrainTest::expectNear;
using TerrainTest::Vec3;
using Velun::Point;
using Velun::Water;

namespace {

struct QueryCase {
    const char* name;
    Point point;
    float u, v, surfaceY, distance;  // quad coordinates, surface height, signed distance
    Vec3 velocity;
};

using WaterQueryTest = VelunTest::EngineTest;

void expectQuery(Water const& water, QueryCase const& c) {
    SCOPED_TRACE(c.name);
    Water::PointHandle handle = water.getPointHandle(c.point);
    ASSERT_TRUE(handle.hasQuad());
    EXPECT_NEAR(handle.getX(), c.u, 1e-4f);
    EXPECT_NEAR(handle.getY(), c.v, 1e-4f);
    expectNear(water.getSurfacePoint(handle), Vec3(c.point[0], c.surfaceY, c.point[2]));
    EXPECT_NEAR(water.getDistance(c.point), c.distance, 1e-4f);
    expectNear(water.getVelocity(c.point), c.velocity);
}

// `convex`: P3 maps to (2, 2) in the frame of the other corners, neither a parallelogram
// nor a trapezoid, so only the exact inverse of the bilinear shape finds (u, v); heights
// 0, 1, 2 and 5 at the corners, each point the shape at (u, v). `lines`: three lines
// along x with flow across them towards -z at speeds 1, 3 and 5, two quads.
TEST_F(WaterQueryTest, QuadsAnswerOnTheirBilinearShapeAndAPointOnASharedLineBelongsToTheOlderOne) {
    Water convex, lines;
    convex.addQuad(Point(0, 0, 0), Point(10, 1, 0), Vec3(1, 0, 0));
    convex.addQuad(Point(0, 2, 10), Point(20, 5, 20), Vec3(0, 0, 4));
    const QueryCase convexCases[] = {
        {"u 0.5, v 0.5", Point(7.5f, 12, 7.5f), 0.5f, 0.5f, 2, 10, Vec3(0.5f, 0, 2)},
        {"u 0.25, v 0.75", Point(4.375f, 0, 9.375f), 0.25f, 0.75f, 2.125f, -2.125f, Vec3(0.25f, 0, 3)},
        {"u 0.9, v 0.1", Point(9.9f, 1.28f, 1.9f), 0.9f, 0.1f, 1.28f, 0, Vec3(0.9f, 0, 0.4f)},
        {"far corner", Point(20, 5, 20), 1, 1, 5, 0, Vec3(0, 0, 4)},
    };
    for (QueryCase const& c : convexCases)
        expectQuery(convex, c);

    lines.addQuad(Point(0, 0, 0), Point(10, 0, 0), 1.0f);
    EXPECT_FALSE(lines.getPointHandle(Point(5, 0, 0)).hasQuad());
    for (int line = 1; line < 3; ++line)
        lines.addQuad(Point(0, 0, 10.0f * line), Point(10, 0, 10.0f * line), 1.0f + 2 * line);
    ASSERT_EQ(lines.getQuadCount(), 2u);
    const QueryCase cases[] = {
        {"middle, below", Point(5, -2, 5), 0.5f, 0.5f, 0, -2, Vec3(0, 0, -2)},
        {"on the shared line", Point(3, 1, 10), 0.3f, 1, 0, 1, Vec3(0, 0, -3)},
        {"just past it", Point(3, 0, 10.5f), 0.3f, 0.05f, 0, 0, Vec3(0, 0, -3.1f)},
        {"near the far corner", Point(10, 1, 19), 1, 0.9f, 0, 1, Vec3(0, 0, -4.8f)},
        {"last line", Point(3, 0, 20), 0.3f, 1, 0, 0, Vec3(0, 0, -5)},
    };
    for (QueryCase const& c : cases)
        expectQuery(lines, c);
    Point beside(5, 3, 21);
    expectNear(lines.getSurfacePoint(beside), beside);
    EXPECT_EQ(lines.getDistance(beside), 0.0f);
    expectNear(lines.getVelocity(beside), Vec3(0, 0, 0));
}

// The water turned a quarter about y and moved to x = 100: local x runs along world
// -z and local z along world x. Points, surfaces and flow are all in world terms.
TEST_F(WaterQueryTest, PlacedWaterAnswersInWorldCoordinates) {
    Velun::SceneRoot scene(1);
    Velun::TransformationNode place;
    Water water;
    place.translate(100, 0, 0, false);
    place.rotateY(float(M_PI / 2), true);
    place.setChild(water);
    scene.getRoot()->attachChild(place);
    water.addQuad(Point(0, 0, 0), Point(10, 0, 0), Vec3(2, 0, 0));
    water.addQuad(Point(0, 0, 10), Point(10, 0, 10), Vec3(2, 0, 4));
    scene.getUpdateTraverser()->run(0);

    expectQuery(water, {"local (5, 1, 2.5)", Point(102.5f, 1, -5), 0.5f, 0.25f, 0, 1, Vec3(1, 0, -2)});
    EXPECT_FALSE(water.getPointHandle(Point(5, 1, 2.5f)).hasQuad());
}

// A quad that cannot be mapped says so once, with the far corner as far as it was
// found, and is never found; the quad after it answers as usual.
TEST_F(WaterQueryTest, DegenerateAndReversedQuadsAreReportedAndSkipped) {
    const struct {
        const char* name;
        float lines[3][4];  // x and z of start and end, at y = 0
        float inBadQuad[2], inNextQuad[2];
        const char* farCorner;
    } cases[] = {
        {"second line reversed", {{0, 0, 10, 0}, {10, 10, 0, 10}, {10, 20, 0, 20}}, {5, 5}, {5, 15}, "-1; 1"},
        {"first line of length 0", {{5, 0, 5, 0}, {0, 10, 10, 10}, {0, 20, 10, 20}}, {5, 5}, {5, 15}, "0; 0"},
        {"start in line", {{0, 0, 10, 0}, {20, 0, 30, 10}, {10, 10, 20, 20}}, {12, 1}, {20, 10}, "0; 0"},
    };
    static VelunTest::ChannelLog log;  // as long as the loggers it gives
    core.getLogManager().registerBackend(log);
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        Water water;
        log.mLines.clear();
        for (auto const& l : c.lines)
            water.addQuad(Point(l[0], 0, l[1]), Point(l[2], 0, l[3]), Vec3(1, 0, 0));
        const std::string line = std::string("water: Invalid quad coordinates! Quad: 0; P3: ") + c.farCorner;
        EXPECT_EQ(log.mLines, std::vector<std::string>({line}));
        EXPECT_FALSE(water.getPointHandle(Point(c.inBadQuad[0], 0, c.inBadQuad[1])).hasQuad());
        Water::PointHandle next = water.getPointHandle(Point(c.inNextQuad[0], 0, c.inNextQuad[1]));
        ASSERT_TRUE(next.hasQuad());
        EXPECT_EQ(next.getQuad()->getIndex(), 1u);
    }
}

// Flat ground at height 1 over x and z from 0 to 4, under water whose surface falls
// from 3 at z = 0 to -1 at z = 4 and reaches beyond the ground along x.
TEST_F(WaterQueryTest, DepthIsMeasuredAgainstTheGroundWhereThereIsOne) {
    Velun::Terrain terrain(1, 1);
    terrain.initializeTerrain(2, 0, 4.0f);
    terrain.getTile(0, 0)->setMaxHeight(5.0f);
    ASSERT_TRUE(terrain.getTile(0, 0)->load(TerrainTest::grey(4, std::vector<unsigned char>(16, 51))));
    Water water;
    water.addQuad(Point(-2, 3, 0), Point(6, 3, 0), Vec3(0, 0, 1));
    water.addQuad(Point(-2, -1, 4), Point(6, -1, 4), Vec3(0, 0, 1));
    EXPECT_EQ(water.getDepth(Point(2, 0, 3.5f)), 10.0f);
    water.setTerrain(terrain);
    const struct {
        const char* name;
        Point point;
        float depth;
    } cases[] = {{"deep end", Point(2, 5, 0.5f), 1.5f},
                 {"shallows, point below the ground", Point(2, 0, 1.5f), 0.5f},
                 {"ground above the surface", Point(2, 0, 3.5f), 0},
                 {"beyond the ground", Point(5, 0, 1), 10},
                 {"beside the water", Point(2, 0, 5), -1}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_NEAR(water.getDepth(c.point), c.depth, 1e-4f);
    }
}

}  // namespace
