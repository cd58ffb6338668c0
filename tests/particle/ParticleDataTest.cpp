#include <gtest/gtest.h>

#include <vector>

#include "geometry/GeometryGroup.h"
#include "particle/ParticleData.h"
#include "scene/BoundingBox.h"

using Dorvan::TVector;
using Velun::BoundingBox;
using Velun::ParticleData;

namespace {

typedef TVector<float, 3> Vec;

struct Drawn {
    std::vector<unsigned int> indices;
    BoundingBox const* box;
};

Drawn drawn(ParticleData& data) {
    Dorvan::SharedPtr<Velun::Geometry> geometry = data.getGeometryData();
    Velun::GeometryElement* element = geometry->getElementGroups().get(0)->getElementList(0).get(0);
    Velun::IndexDataSet& list = dynamic_cast<Velun::IndexElement&>(*element).getIndexList();
    const unsigned int* first = static_cast<const unsigned int*>(list.getIndexList());
    return Drawn{std::vector<unsigned int>(first, first + list.getCount()),
                 static_cast<BoundingBox const*>(geometry->getBoundingVolume())};
}

float vertexX(ParticleData& data, int slot) {
    return static_cast<const float*>(data.getGeometryData()->getIndexedDataSet(0)->getVertices())[3 * slot];
}

TEST(ParticleDataTest, SlotsAreReusedLastFreedFirstAndOnlyLivingOnesAreDrawn) {
    ParticleData data;
    EXPECT_EQ(data.addParticle(Vec(0, 0, 0), 0), -1) << "nothing before initialize";
    EXPECT_EQ(data.updateData(0), 0u);
    data.initialize();
    EXPECT_EQ(data.updateData(0), 0u);
    EXPECT_TRUE(drawn(data).box->isEmpty());

    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(data.addParticle(Vec(float(i), float(-i), 2.0f * i), 0), i);
    for (int slot : {1, 3}) {
        data.setParticle(slot);
        data.deleteParticle();
        data.deleteParticle();  // a second delete must not free the slot twice
    }
    EXPECT_EQ(data.getParticleCount(false), 2u);
    EXPECT_EQ(data.updateData(0), 2u);
    EXPECT_EQ(drawn(data).indices, (std::vector<unsigned int>{0, 2}));
    EXPECT_EQ(drawn(data).box->getMin()[1], -2.0f);
    EXPECT_EQ(drawn(data).box->getMax()[2], 4.0f);

    EXPECT_EQ(data.addParticle(Vec(30, 0, 0), 0), 3);
    EXPECT_EQ(data.addParticle(Vec(10, 0, 0), 0), 1);
    EXPECT_EQ(data.addParticle(Vec(40, 0, 0), 0), 4);
    EXPECT_EQ(vertexX(data, 1), 10.0f) << "a reused slot's position goes to its own vertex";
    EXPECT_EQ(data.getParticleCount(false), 5u);
    data.updateData(0);
    EXPECT_EQ(drawn(data).indices, (std::vector<unsigned int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(drawn(data).box->getMax()[0], 40.0f);
}

TEST(ParticleDataTest, IterationSkipsTheDeadAndWithoutACurrentParticleNothingIsWritten) {
    ParticleData data;
    data.initialize();
    for (int i = 0; i < 3; ++i)
        data.addParticle(Vec(float(i), 0, 0), 100);
    data.setParticle(0);
    data.deleteParticle();
    EXPECT_FALSE(data.setParticle(3));
    std::vector<int> visited;
    for (data.setParticle(-1); data.nextParticle();)
        visited.push_back(data.getCurrentNum());
    EXPECT_EQ(visited, (std::vector<int>{1, 2}));
    EXPECT_EQ(data.getCurrentNum(), -1);

    data.setPosition(Vec(9, 9, 9));
    data.setVelocity(Vec(9, 9, 9));
    data.setMaxTime(9);
    data.deleteParticle();
    EXPECT_EQ(data.getParticleCount(false), 2u);
    for (int slot = 0; slot < 3; ++slot) {
        SCOPED_TRACE(slot);
        EXPECT_EQ(vertexX(data, slot), float(slot));
        data.setParticle(slot);
        EXPECT_EQ(data.getVelocity()[0], 0.0f);
        EXPECT_EQ(data.getMaxTime(), 100);
    }
}

TEST(ParticleDataTest, ClearEndsEveryParticleAndInitializeStartsOver) {
    ParticleData data;
    data.initialize();
    for (int i = 0; i < 20; ++i)
        data.addParticle(Vec(float(i), 0, 0), 0);
    data.updateData(0);
    data.clear();
    EXPECT_EQ(data.getParticleCount(false), 0u);
    EXPECT_TRUE(drawn(data).indices.empty());
    EXPECT_TRUE(drawn(data).box->isEmpty());
    EXPECT_EQ(data.addParticle(Vec(0, 0, 0), 0), 19) << "arrays keep their size";

    data.initialize();  // with live particles: nothing of the old cloud stays (ASan)
    EXPECT_EQ(data.addParticle(Vec(5, 0, 0), 0), 0);
    EXPECT_EQ(data.updateData(0), 1u);
    EXPECT_EQ(drawn(data).indices, (std::vector<unsigned int>{0}));
    EXPECT_EQ(vertexX(data, 0), 5.0f);
}

}  // namespace
