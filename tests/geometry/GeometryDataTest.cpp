#include <gtest/gtest.h>

#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/IndexedQuadStrip.h"
#include "geometry/IndexedQuads.h"
#include "geometry/IndexedTriangleStrip.h"
#include "geometry/IndexedTriangles.h"
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

TEST(GeometryDataTest, IndexedElementsFixTheirTypeAndGrowth) {
    IndexedTriangles triangles;
    EXPECT_EQ(GeometryElement::Triangles, triangles.getElementType());
    EXPECT_EQ(6u, triangles.getIndexList().getCapacity());
    for (unsigned int i = 0; i < 3; ++i)
        triangles.addTriangle(i, i + 1, i + 2);
    EXPECT_EQ(9u, triangles.getIndexList().getCount());
    EXPECT_EQ(12u, triangles.getIndexList().getCapacity());
    EXPECT_EQ(4u, triangles.getIndexList().getIndex(8));

    IndexedQuads quads(2);
    quads.addQuad(0, 1, 2, 3);
    EXPECT_EQ(GeometryElement::Quads, quads.getElementType());
    EXPECT_EQ(10u, quads.getIndexList().getCapacity());
    EXPECT_EQ(3u, quads.getIndexList().getIndex(3));

    IndexedTriangleStrip strip;
    strip.addVertice(5);
    EXPECT_EQ(GeometryElement::TriangleStrip, strip.getElementType());
    EXPECT_EQ(1u, strip.getIndexList().getCount());

    IndexedQuadStrip quadStrip;
    quadStrip.addQuad(0, 1);
    EXPECT_EQ(GeometryElement::QuadStrip, quadStrip.getElementType());
    EXPECT_EQ(2u, quadStrip.getIndexList().getCount());
    for (unsigned int i = 0; i < 3; ++i)
        quadStrip.addQuad(i, i);
    EXPECT_EQ(8u, quadStrip.getIndexList().getCount());
    EXPECT_EQ(18u, quadStrip.getIndexList().getCapacity());

    // Seen the way a renderer sees them.
    IndexElement& element = triangles;
    EXPECT_EQ(DataType::UnsignedInt, element.getIndexList().getIndexType());
}
