#include <gtest/gtest.h>

#include "ObjectTestModels.h"
#include "geometry/ElementData.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometryObjectFactory.h"
#include "geometry/GeometrySubobject.h"
#include "scene/BoundingBox.h"
#include "scene/Branch.h"
#include "scene/SceneRoot.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"

using namespace Velun;
using Dorvan::SharedPtr;
using ObjectTestModels::makeBox;

namespace {

// A volume that tells when it is deleted.
class TrackedBox : public BoundingBox {
public:
    explicit TrackedBox(int* deleted) : mDeleted(deleted) {}
    ~TrackedBox() override { ++*mDeleted; }
    int* mDeleted;
};

// An element that tells when it is deleted.
class TrackedElement : public VertexElementData {
public:
    explicit TrackedElement(int* deleted) : VertexElementData(Points), mDeleted(deleted) {}
    ~TrackedElement() override { ++*mDeleted; }
    int* mDeleted;
};

}  // namespace

TEST(GeometryDataTest, GroupsOwnTheirElements) {
    int deleted = 0;
    {
        GeometryData geometry;
        GeometryDataGroup& group = geometry.createGroup();
        group.setMaterialIndex(4);
        group.addElement(*new TrackedElement(&deleted));
        group.addElement(*new TrackedElement(&deleted));
        EXPECT_EQ(4u, group.getMaterialIndex());
        ASSERT_EQ(2u, group.getElementList(0).size());
        EXPECT_EQ(GeometryElement::Points, group.getElementList(0).get(0)->getElementType());
        group.clearElements();
        EXPECT_EQ(2, deleted);
        EXPECT_EQ(0u, group.getElementList(0).size());
        group.addElement(*new TrackedElement(&deleted));
    }
    EXPECT_EQ(3, deleted);
}

TEST(GeometryDataTest, DestroyingTheGeometryFreesVolumesGroupsAndOneReference) {
    int deleted = 0;
    Dorvan::SharedPtr<VertexData> vertices(new VertexData());
    {
        GeometryData geometry;
        geometry.setIndexedVertexData(vertices);
        TrackedBox* box = new TrackedBox(&deleted);
        geometry.setBoundingVolume(box);
        geometry.setPhysicsVolume(box);  // one volume in both roles is deleted once
        geometry.createGroup().addElement(*new TrackedElement(&deleted));
    }
    EXPECT_EQ(2, deleted);
    EXPECT_EQ(1, vertices.getRefCount());
}

namespace {

typedef ObjectTestModels::EngineTest GeometrySubobjectTest;

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

namespace {

typedef ObjectTestModels::EngineTest GeometryObjectTest;

GeometrySubobject* newPart(SharedPtr<Geometry> geometry) {
    GeometrySubobject* part = new GeometrySubobject();
    part->setGeometry(geometry, 0);
    return part;
}

TEST_F(GeometryObjectTest, SubobjectAlreadyInATreeIsRefused) {
    GeometryObject one;
    GeometryObject other;
    GeometrySubobject* part = newPart(makeBox(Point(0, 0, 0), Point(1, 1, 1)));
    ASSERT_TRUE(one.addSubobject(*part));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(other.addSubobject(*part));
    std::ostringstream expected;
    expected << "Could not add subobject " << part->getNodeId() << " to object " << other.getNodeId()
             << ": it is part of a scene tree already\n";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), expected.str());
    EXPECT_EQ(other.getAttachedChildCount(), 0);
    EXPECT_EQ(part->getParent(), one.getAttachedChild(0));
}

TEST_F(GeometryObjectTest, RemovedSubobjectGoesBackToTheCaller) {
    GeometryObject object;
    GeometrySubobject* part = newPart(makeBox(Point(0, 0, 0), Point(1, 1, 1)));
    object.addSubobject(*part);
    EXPECT_EQ(object.removeSubobject(object.getNodeId()), nullptr);
    EXPECT_EQ(object.removeSubobject(part->getNodeId()), part);
    EXPECT_EQ(part->getParent(), nullptr);
    EXPECT_EQ(object.getAttachedChildCount(), 0);
    EXPECT_EQ(object.getSubobjectCount(), 0u);
    EXPECT_EQ(object.getTransformation(*part), nullptr);
    delete part;
}

TEST_F(GeometryObjectTest, FactoryBuildsObjectsAroundSharedData) {
    SharedPtr<Geometry> box = makeBox(Point(0, 0, 0), Point(1, 1, 1));
    Dorvan::Vector<SharedPtr<Material>> materials;
    materials.add(SharedPtr<Material>(new Material()));
    materials.add(SharedPtr<Material>(new Material()));
    GeometryObjectFactory factory("crate", box, materials);
    EXPECT_EQ(factory.getName(), "crate");

    GeometryObject* a = dynamic_cast<GeometryObject*>(factory.createObject());
    GeometryObject* b = dynamic_cast<GeometryObject*>(factory.createObject());
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a->getName(), "crate");
    EXPECT_EQ(a->getSubobjectAt(0)->getGeometry(0), box);
    EXPECT_EQ(b->getSubobjectAt(0)->getGeometry(0), box);
    EXPECT_EQ(a->getDefaultMaterial(1), materials.get(1));
    EXPECT_EQ(b->getDefaultMaterial(1), materials.get(1));
    EXPECT_EQ(box.getRefCount(), 4);
    delete a;
    delete b;
    EXPECT_EQ(box.getRefCount(), 2);

    GeometryObjectFactory empty("empty", SharedPtr<Geometry>(), materials);
    testing::internal::CaptureStderr();
    EXPECT_EQ(empty.createObject(), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Could not create object empty: its factory has no geometry\n");
}

// A scene with one object of two unit boxes; the object sits at x = 10, its second part
// 3 further along x.
class GeometryObjectSceneTest : public ObjectTestModels::EngineTest {
protected:
    GeometryObjectSceneTest()
        : mScene(1), mObject(new GeometryObject("model")), mPlace(new TransformationNode()) {
        mFirst = newPart(makeBox(Point(0, 0, 0), Point(1, 1, 1)));
        mSecond = newPart(makeBox(Point(0, 0, 0), Point(1, 1, 1)));
        mObject->addSubobject(*mFirst);
        mObject->addSubobject(*mSecond);
        mObject->getTransformation(*mSecond)->translate(3, 0, 0, false);
        mPlace->translate(10, 0, 0, false);
        mPlace->setChild(*mObject);
        mScene.getRoot()->attachChild(*mPlace);
    }
    ~GeometryObjectSceneTest() override {
        delete mObject;
        delete mPlace;
    }
    void update() { mScene.getUpdateTraverser()->run(0); }

    SceneRoot mScene;
    GeometryObject* mObject;
    TransformationNode* mPlace;
    GeometrySubobject* mFirst;
    GeometrySubobject* mSecond;
};

TEST_F(GeometryObjectSceneTest, DeletingAnAttachedObjectTakesItsPartsOut) {
    update();
    Node* parentOfFirst = mFirst->getParent();
    ASSERT_NE(parentOfFirst, nullptr);
    delete mObject;
    mObject = nullptr;
    EXPECT_FALSE(mPlace->hasChild());
    update();
    EXPECT_EQ(mScene.getRoot()->getAttachedChildCount(), 1);
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

}  // namespace
