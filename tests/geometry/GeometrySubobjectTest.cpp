#include <gtest/gtest.h>

#include "ObjectTestModels.h"
#include "geometry/GeometrySubobject.h"
#include "scene/Branch.h"

using Dorvan::SharedPtr;
using ObjectTestModels::makeBox;
using namespace Velun;

namespace {

typedef ObjectTestModels::EngineTest GeometrySubobjectTest;

TEST_F(GeometrySubobjectTest, VolumesComeFromTheGeometry) {
    GeometrySubobject part;
    Drawable const& drawable = part;
    EXPECT_EQ(part.getBoundingVolume(), nullptr);
    EXPECT_EQ(drawable.getPhysicsVolume(), nullptr);
    EXPECT_TRUE(part.getGeometry(0).isNull());

    GeometryData* data = new GeometryData("box");
    data->setBoundingVolume(new BoundingBox(Point(0, 0, 0), Point(1, 2, 3)));
    BoundingBox* physics = new BoundingBox(Point(0, 0, 0), Point(1, 1, 1));
    data->setPhysicsVolume(physics);
    SharedPtr<Geometry> geometry(data);
    part.setGeometry(geometry, 0);
    EXPECT_EQ(part.getGeometry(0), geometry);
    EXPECT_EQ(part.getGeometry(5), geometry) << "the index is reserved";
    EXPECT_EQ(drawable.getGeometry(0), geometry);
    EXPECT_EQ(drawable.getBoundingVolume(), data->getBoundingVolume());
    EXPECT_EQ(drawable.getPhysicsVolume(), physics);
}

TEST_F(GeometrySubobjectTest, NewGeometryMarksTheNode) {
    Velun::Branch group;
    GeometrySubobject* part = new GeometrySubobject();
    group.attachChild(*part);
    part->finishUpdate();
    group.finishUpdate();
    part->setGeometry(makeBox(Point(0, 0, 0), Point(1, 1, 1)), 0);
    EXPECT_EQ(part->getNodeStatus(), Node::StatusModified);
    EXPECT_EQ(group.getNodeStatus(), Node::StatusChildModified);
    delete part;
}

}  // namespace
