#include <gtest/gtest.h>

#include "ObjectTestModels.h"
#include "core/FileNameMapper.h"
#include "geometry/GeometryManager.h"

using Dorvan::SharedPtr;
using ObjectTestModels::makeBox;
using namespace Velun;

namespace {

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

}  // namespace
