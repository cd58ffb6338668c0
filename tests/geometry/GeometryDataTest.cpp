#include <gtest/gtest.h>

#include "geometry/ElementData.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "scene/BoundingBox.h"

using namespace Velun;

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
