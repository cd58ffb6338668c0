#include <gtest/gtest.h>

#include "ObjectTestModels.h"
#include "core/FileNameMapper.h"
#include "geometry/GeometryManager.h"

using Dorvan::SharedPtr;
using ObjectTestModels::makeBox;
using Velun::Geometry;
using Velun::GeometryManager;
using Velun::NameMapper;
using Velun::Point;

namespace {

TEST(GeometryManagerTest, DataSetIdsAreNewEachTime) {
    GeometryManager manager;
    std::uint64_t first = manager.createDataSetId();
    EXPECT_GT(first, 0u);
    manager.returnDataSetId(first);
    std::uint64_t second = manager.createDataSetId();
    EXPECT_GT(second, first);
    // One sequence with the data sets' own identifiers.
    Velun::VertexData set;
    EXPECT_GT(set.getId(), second);
    EXPECT_GT(manager.createDataSetId(), set.getId());
}

TEST(GeometryManagerTest, GeometriesByName) {
    GeometryManager manager;
    EXPECT_FALSE(manager.isLoaded("box"));
    EXPECT_TRUE(manager.getGeometry("box").isNull());
    EXPECT_FALSE(manager.isLoaded("box")) << "a lookup must not add an entry";

    SharedPtr<Geometry> box = makeBox(Point(0, 0, 0), Point(1, 1, 1));
    SharedPtr<Geometry> other = makeBox(Point(0, 0, 0), Point(2, 2, 2));
    manager.registerGeometry("box", box);
    EXPECT_TRUE(manager.isLoaded("box"));
    EXPECT_EQ(manager.getGeometry("box"), box);
    manager.registerGeometry("box", other);
    EXPECT_EQ(manager.getGeometry("box"), other);
    EXPECT_EQ(box.getRefCount(), 1);
}

TEST(GeometryManagerTest, RegistryKeepsGeometriesUntilItEnds) {
    SharedPtr<Geometry> box = makeBox(Point(0, 0, 0), Point(1, 1, 1));
    {
        GeometryManager manager;
        manager.registerGeometry("box", box);
        EXPECT_FALSE(manager.unloadGeometry("box"));
        EXPECT_TRUE(manager.isLoaded("box"));
        EXPECT_EQ(box.getRefCount(), 2);
    }
    EXPECT_EQ(box.getRefCount(), 1);
}

TEST(GeometryManagerTest, NameMapperIsKept) {
    GeometryManager manager;
    EXPECT_TRUE(manager.getGeometryNameMapper().isNull());
    SharedPtr<NameMapper> mapper(new Velun::FileNameMapper(".\\models"));
    manager.setGeometryNameMapper(mapper);
    EXPECT_EQ(manager.getGeometryNameMapper(), mapper);
}

}  // namespace
