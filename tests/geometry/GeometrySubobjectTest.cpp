#include <gtest/gtest.h>

#include "ObjectTestModels.h"
#include "geometry/GeometrySubobject.h"
#include "scene/Branch.h"

using Dorvan::SharedPtr;
using ObjectTestModels::makeBox;
using Velun::BoundingBox;
using Velun::Drawable;
using Velun::Geometry;
using Velun::GeometryData;
using Velun::GeometrySubobject;
using Velun::Material;
using Velun::Node;
using Velun::Point;

namespace {

typedef ObjectTestModels::EngineTest GeometrySubobjectTest;

TEST_F(GeometrySubobjectTest, IsADrawableLeafOfTheObjectType) {
    GeometrySubobject part("wheel");
    EXPECT_EQ(part.getNodeType(), Node::TypeObject);
    EXPECT_TRUE(part.isLeaf());
    Node* node = &part;
    EXPECT_EQ(dynamic_cast<Drawable*>(node), static_cast<Drawable*>(&part));
}

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

TEST_F(GeometrySubobjectTest, AChangedVolumeMarksTheNodesThatShowIt) {
    SharedPtr<Geometry> first = makeBox(Point(0, 0, 0), Point(1, 1, 1));
    SharedPtr<Geometry> second = makeBox(Point(0, 0, 0), Point(2, 2, 2));
    GeometrySubobject* part = new GeometrySubobject();
    part->setGeometry(first, 0);
    part->finishUpdate();
    first->volumeChanged();
    EXPECT_EQ(part->getNodeStatus(), Node::StatusModified);

    part->setGeometry(second, 0);
    part->finishUpdate();
    first->volumeChanged();
    EXPECT_EQ(part->getNodeStatus(), Node::StatusUpdated) << "no longer shows the first";
    second->volumeChanged();
    EXPECT_EQ(part->getNodeStatus(), Node::StatusModified);
    delete part;
    second->volumeChanged();  // the deleted node is no longer registered (ASan)
}

TEST_F(GeometrySubobjectTest, MaterialsBySlot) {
    GeometrySubobject part;
    GeometrySubobject const& constPart = part;
    SharedPtr<Material> a(new Material());
    SharedPtr<Material> b(new Material());

    EXPECT_TRUE(part.getMaterial(2).isNull());
    EXPECT_FALSE(part.removeMaterial(2));
    part.setMaterial(2, a);
    part.setMaterial(2, b);
    EXPECT_EQ(part.getMaterial(2), b);
    EXPECT_EQ(constPart.getMaterial(2), b);
    EXPECT_TRUE(constPart.getMaterial(1).isNull());
    EXPECT_EQ(a.getRefCount(), 1);

    EXPECT_TRUE(part.removeMaterial(2));
    EXPECT_TRUE(part.getMaterial(2).isNull());
    EXPECT_EQ(b.getRefCount(), 1);
}

}  // namespace
