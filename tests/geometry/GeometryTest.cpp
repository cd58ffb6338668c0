#include <gtest/gtest.h>

#include "ObjectTestModels.h"
#include "geometry/ElementData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"
#include "scene/Branch.h"
#include "scene/SceneRoot.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"
#include "support/Engine.h"

using namespace Velun;
using Dorvan::SharedPtr;
using ObjectTestModels::makeBox;

namespace {

// A T that counts its deletion.
template <class T>
class Tracked : public T {
public:
    template <class... Args>
    explicit Tracked(int* deleted, Args... args) : T(args...), mDeleted(deleted) {}
    ~Tracked() override { ++*mDeleted; }
    int* mDeleted;
};

TEST(GeometryDataTest, GroupsOwnTheirElementsAndTheGeometryItsVolumesOnce) {
    int deleted = 0;
    Dorvan::SharedPtr<VertexData> vertices(new VertexData());
    {
        GeometryData geometry;
        geometry.setIndexedVertexData(vertices);
        BoundingBox* box = new Tracked<BoundingBox>(&deleted);
        geometry.setBoundingVolume(box);
        geometry.setPhysicsVolume(box);  // one volume in both roles is deleted once
        GeometryDataGroup& group = geometry.createGroup();
        group.addElement(*new Tracked<VertexElementData>(&deleted, VertexElementData::Points));
        group.addElement(*new Tracked<VertexElementData>(&deleted, VertexElementData::Points));
        ASSERT_EQ(2u, group.getElementList(0).size());
        group.clearElements();
        EXPECT_EQ(2, deleted);
        EXPECT_EQ(0u, group.getElementList(0).size());
        group.addElement(*new Tracked<VertexElementData>(&deleted, VertexElementData::Points));
    }
    EXPECT_EQ(4, deleted);
    EXPECT_EQ(1, vertices.getRefCount());
}

typedef VelunTest::EngineTest GeometryObjectTest;

TEST_F(GeometryObjectTest, NewGeometryOrAChangedVolumeMarksTheNodesThatShowIt) {
    Velun::Branch group;
    GeometrySubobject* part = new GeometrySubobject();
    group.attachChild(*part);
    part->finishUpdate();
    group.finishUpdate();
    SharedPtr<Geometry> first = makeBox(), second = makeBox();
    part->setGeometry(first, 0);
    EXPECT_EQ(part->getNodeStatus(), Node::StatusModified);
    EXPECT_EQ(group.getNodeStatus(), Node::StatusChildModified);

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

// A subobject belongs to one object; removed, it goes back to the caller; an attached object
// that is deleted takes its parts out of the scene. A factory without geometry makes nothing; what the
// objects of a factory share shows through the object manager (ObjectManagerTest).
TEST_F(GeometryObjectTest, SubobjectsBelongToOneObjectAndLeaveWithIt) {
    SceneRoot scene(1);
    GeometryObject other;
    GeometryObject* object = new GeometryObject("model");
    GeometrySubobject* part = new GeometrySubobject();
    ASSERT_TRUE(object->addSubobject(*part));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(other.addSubobject(*part));
    std::ostringstream expected;
    expected << "Could not add subobject " << part->getNodeId() << " to object " << other.getNodeId()
             << ": it is part of a scene tree already\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), expected.str());
    EXPECT_EQ(other.getAttachedChildCount(), 0);
    EXPECT_EQ(part->getParent(), object->getAttachedChild(0));

    EXPECT_EQ(object->removeSubobject(object->getNodeId()), nullptr);
    EXPECT_EQ(object->removeSubobject(part->getNodeId()), part);
    EXPECT_EQ(part->getParent(), nullptr);
    EXPECT_EQ(object->getAttachedChildCount(), 0);
    EXPECT_EQ(object->getSubobjectCount(), 0u);
    EXPECT_EQ(object->getTransformation(*part), nullptr);

    ASSERT_TRUE(object->addSubobject(*part));
    TransformationNode place;
    place.setChild(*object);
    scene.getRoot()->attachChild(place);
    scene.getUpdateTraverser()->run(0);
    ASSERT_NE(part->getParent(), nullptr);
    delete object;
    EXPECT_FALSE(place.hasChild());
    scene.getUpdateTraverser()->run(0);
    EXPECT_EQ(scene.getRoot()->getAttachedChildCount(), 1);

    GeometryObjectFactory empty("empty", SharedPtr<Geometry>(), Dorvan::Vector<SharedPtr<Material>>());
    testing::internal::CaptureStderr();
    EXPECT_EQ(empty.createObject(), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Could not create object empty: its factory has no geometry\n");
}

}  // namespace
