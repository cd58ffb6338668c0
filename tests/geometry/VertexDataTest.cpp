#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "geometry/IndexData.h"
#include "geometry/VertexData.h"
#include "scene/Color.h"
#include "support/EngineClock.h"

using namespace Velun;

namespace {

template <class T>
unsigned int rawIndex(const void* list, unsigned int i) {
    return static_cast<const T*>(list)[i];
}
const float* floats(const void* p) { return static_cast<const float*>(p); }

}  // namespace

// Each index type stores the value converted to its size, and a full list grows by its step.
TEST(IndexDataTest, StoresEachTypeAndGrowsByTheStep) {
    const struct {
        DataType::Type type;
        unsigned int first, second;
        unsigned int (*raw)(const void*, unsigned int);
    } cases[] = {{DataType::UnsignedInt, 70000, 12, rawIndex<std::uint32_t>},
                 {DataType::UnsignedShort, 65535, 300, rawIndex<std::uint16_t>},
                 {DataType::UnsignedByte, 200, 7, rawIndex<std::uint8_t>}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        IndexData list;
        list.setIndexType(c.type);
        list.initialize(2, 3);
        EXPECT_EQ(0u, list.addIndex(c.first));
        EXPECT_EQ(1u, list.addIndex(c.second));
        EXPECT_EQ(2u, list.addIndex(c.second));
        EXPECT_EQ(3u, list.getCount());
        EXPECT_EQ(5u, list.getCapacity());
        EXPECT_EQ(c.first, c.raw(list.getIndexList(), 0));
        EXPECT_EQ(c.second, c.raw(list.getIndexList(), 2));
        EXPECT_TRUE(list.setIndex(1, 4));
        EXPECT_EQ(4u, list.getIndex(1));
        EXPECT_FALSE(list.setIndex(3, 5));
    }
}

TEST(VertexDataTest, NormalsAreStoredNormalisedAndNeverNaN) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    const float cases[][6] = {{0, 3, 4, 0, 0.6f, 0.8f}, {1e-40f, 0, 0, 1, 0, 0},
                              {0, 0, 0, 0, 0, 1},       {nan, 1, 0, 0, 0, 1},
                              {inf, 0, 0, 0, 0, 1},     {3e38f, 3e38f, 0, 0.70710677f, 0.70710677f, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c[0] << " " << c[1] << " " << c[2]);
        VertexData data;
        data.setUseNormal(true);
        data.initialize(1, 1);
        data.addVertex();
        data.setNormal(c[0], c[1], c[2]);
        const float* n = floats(data.getNormals());
        for (int i = 0; i < 3; ++i)
            EXPECT_FLOAT_EQ(c[3 + i], n[i]);
    }
}

TEST(VertexDataTest, EveryAttributeLandsAtItsVertexAndSurvivesGrowthByTheStep) {
    VertexData data;
    data.setUseColor(true);
    data.setUseSecondaryColor(true);
    data.setUseFogCoordinates(true);
    data.setUseTexCoordinates(true);
    data.addTextureIndex(4);
    data.addTextureIndex(7);
    data.initialize(2, 3);
    EXPECT_EQ(2u, data.getNumTexLayer());
    EXPECT_EQ(16u, data.getStride(VertexDataSet::Part::TexCoordinate));
    EXPECT_EQ(0u, data.getStride(VertexDataSet::Part::Color));
    EXPECT_EQ(0u, data.getStride(VertexDataSet::Part::Vertex));
    const char* layer0 = static_cast<const char*>(data.getTexCoordinates(0));
    EXPECT_EQ(layer0 + 8, static_cast<const char*>(data.getTexCoordinates(1)));

    for (unsigned int i = 0; i < 2; ++i) {
        EXPECT_EQ(i, data.addVertex());
        data.setVertex(float(i), float(i) + 0.5f, -float(i));
    }
    data.setColor(Color(0.1f, 0.2f, 0.3f, 0.4f));
    data.setSecondaryColor(0.5f, 0.6f, 0.7f);
    data.setFogCoordinate(9.0f);
    data.setTexCoordinate(0.25f, 0.75f, 1);
    data.setTexCoordinate(9.0f, 9.0f, 2);  // no such layer
    // A full set grows by its step; what was written to vertex 1 survives where it belongs.
    EXPECT_EQ(2u, data.addVertex());
    EXPECT_EQ(3u, data.getCount());
    EXPECT_EQ(5u, data.getCapacity());
    EXPECT_FLOAT_EQ(1.5f, floats(data.getVertices())[4]);
    EXPECT_FLOAT_EQ(-1.0f, floats(data.getVertices())[5]);
    EXPECT_FLOAT_EQ(0.1f, floats(data.getColor())[4]);
    EXPECT_FLOAT_EQ(0.4f, floats(data.getColor())[7]);
    EXPECT_FLOAT_EQ(0.7f, floats(data.getSecondaryColor())[5]);
    EXPECT_FLOAT_EQ(9.0f, floats(data.getFogCoordinates())[1]);
    // Layer 1 of vertex 1 begins at float (2 * 1 + 1) * 2.
    EXPECT_FLOAT_EQ(0.25f, floats(data.getTexCoordinates(0))[6]);
    EXPECT_FLOAT_EQ(0.75f, floats(data.getTexCoordinates(0))[7]);
}

TEST(VertexDataTest, StampsMoveOnlyOnSetModifiedAndACopySharesArraysUntilOneSideWrites) {
    VelunTest::EngineClock clock;
    VertexData source;
    for (std::int64_t t : {-5, 0, 1, 1000})
        EXPECT_FALSE(source.hasChanged(t)) << t;
    clock.setTime(500);
    source.initialize(2, 2);
    source.addVertex();
    source.setVertex(1, 2, 3);
    EXPECT_FALSE(source.hasChanged(0));  // filling is not announcing
    source.setModified();
    EXPECT_TRUE(source.hasChanged(0));
    EXPECT_TRUE(source.hasChanged(500));
    EXPECT_FALSE(source.hasChanged(501));

    VertexData copy(source);
    EXPECT_TRUE(copy.hasChanged(500));
    EXPECT_EQ(source.getVertices(), copy.getVertices());
    EXPECT_EQ(1u, copy.getCount());
    // A copy is a new data set for every renderer.
    EXPECT_NE(source.getId(), copy.getId());
    copy.setCurrentVertex(0);
    copy.setVertex(4, 5, 6);
    EXPECT_NE(source.getVertices(), copy.getVertices());
    EXPECT_FLOAT_EQ(1.0f, floats(source.getVertices())[0]);
    EXPECT_FLOAT_EQ(4.0f, floats(copy.getVertices())[0]);

    VertexData assigned;
    std::uint64_t ownId = assigned.getId();
    assigned = source;
    EXPECT_EQ(ownId, assigned.getId());
    EXPECT_EQ(source.getVertices(), assigned.getVertices());
}
