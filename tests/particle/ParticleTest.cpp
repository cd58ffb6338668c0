#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "geometry/GeometryGroup.h"
#include "particle/LinearForceModel.h"
#include "particle/ParticleEngine.h"
#include "particle/PointEmitter.h"
#include "particle/RotateForceModel.h"
#include "scene/BoundingBox.h"
#include "support/EngineClock.h"

using Dorvan::SharedPtr;
using Velun::LinearForceModel;
using Velun::ParticleData;
using Velun::ParticleEngine;
using Velun::PointEmitter;

namespace {

typedef Dorvan::TVector<float, 3> Vec;

struct Drawn {
    std::vector<unsigned int> indices;
    Velun::BoundingBox const* box;
};

Drawn drawn(ParticleData& data) {
    Dorvan::SharedPtr<Velun::Geometry> geometry = data.getGeometryData();
    Velun::GeometryElement* element = geometry->getElementGroups().get(0)->getElementList(0).get(0);
    Velun::IndexDataSet& list = dynamic_cast<Velun::IndexElement&>(*element).getIndexList();
    const unsigned int* first = static_cast<const unsigned int*>(list.getIndexList());
    return Drawn{std::vector<unsigned int>(first, first + list.getCount()),
                 static_cast<Velun::BoundingBox const*>(geometry->getBoundingVolume())};
}

float vertexX(ParticleData& data, int slot) {
    return static_cast<const float*>(data.getGeometryData()->getIndexedDataSet(0)->getVertices())[3 * slot];
}

TEST(ParticleDataTest, SlotsAreReusedLastFreedFirstOnlyLivingOnesAreDrawnAndClearOrInitializeEndsThem) {
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
    EXPECT_FALSE(data.setParticle(4));
    std::vector<int> visited;
    for (data.setParticle(-1); data.nextParticle();)
        visited.push_back(data.getCurrentNum());
    EXPECT_EQ(visited, (std::vector<int>{0, 2}));
    EXPECT_EQ(data.getCurrentNum(), -1);
    data.setPosition(Vec(9, 9, 9));  // with no current particle, writes nothing (ASan)
    data.setVelocity(Vec(9, 9, 9));
    data.setMaxTime(9);
    data.deleteParticle();
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

    data.clear();
    EXPECT_EQ(data.getParticleCount(false), 0u);
    EXPECT_TRUE(drawn(data).indices.empty());
    EXPECT_TRUE(drawn(data).box->isEmpty());
    EXPECT_EQ(data.addParticle(Vec(0, 0, 0), 0), 4) << "arrays keep their size";
    data.initialize();  // with a live particle: nothing of the old cloud stays (ASan)
    EXPECT_EQ(data.addParticle(Vec(5, 0, 0), 0), 0);
    EXPECT_EQ(data.updateData(0), 1u);
    EXPECT_EQ(drawn(data).indices, (std::vector<unsigned int>{0}));
    EXPECT_EQ(vertexX(data, 0), 5.0f);
}

const std::int64_t kStart = 1000;
const int kFrameMs = 16;

class ParticleEngineTest : public ::testing::Test {
protected:
    ParticleEngineTest() { mClock.setTime(kStart); }
    // A point emitter: a burst at initialize, then a rate, lives between the ages (ms, 0 endless).
    static SharedPtr<PointEmitter> emitter(unsigned int burst, float perSecond, unsigned int minAge = 1,
                                           unsigned int maxAge = 1000) {
        SharedPtr<PointEmitter> emitter(new PointEmitter());
        emitter->setInitPointCount(burst);
        emitter->setPointsPerSecond(perSecond);
        emitter->setPointAge(minAge, maxAge);
        return emitter;
    }
    void begin(SharedPtr<ParticleEngine::Emitter> emitter = SharedPtr<ParticleEngine::Emitter>(),
               SharedPtr<ParticleEngine::ForceModel> forces = SharedPtr<ParticleEngine::ForceModel>()) {
        mEngine.setEmitter(emitter);
        mEngine.setForceModel(forces);
        mEngine.initialize();
        mEngine.start();
    }
    void run(int frames) {
        for (int i = 1; i <= frames; ++i)
            mEngine.update(kStart + i * kFrameMs);
    }
    ParticleData& data() { return mEngine.getParticleData(); }

    VelunTest::EngineClock mClock;
    ParticleEngine mEngine;
};

TEST_F(ParticleEngineTest, AConstantForceFollowsSemiImplicitEulerAndARotationKeepsRadiusAndSpeed) {
    const Vec force(3, -1, 0.5f), start(-4, 0, 1), velocity(1, 5, -2);
    SharedPtr<LinearForceModel> linear(new LinearForceModel());
    linear->setExtForce(force);
    begin(SharedPtr<ParticleEngine::Emitter>(), linear);
    data().addParticle(start, 0);
    data().setVelocity(velocity);
    run(60);
    // v_n = v0 + n a dt, and each step moves by the new velocity.
    const float dt = 0.016f, n = 60;
    data().setParticle(0);
    for (int axis = 0; axis < 3; ++axis) {
        SCOPED_TRACE(axis);
        float expected = start[axis] + n * velocity[axis] * dt + force[axis] * dt * dt * n * (n + 1) / 2;
        EXPECT_NEAR(data().getPosition()[axis], expected, 1e-4f);
        EXPECT_NEAR(data().getVelocity()[axis], velocity[axis] + n * force[axis] * dt, 1e-4f);
    }
    // About (1, 0, 0): a particle at the centre stays.
    SharedPtr<Velun::RotateForceModel> rotation(new Velun::RotateForceModel());
    rotation->setCenter(Vec(1, 0, 0));
    begin(SharedPtr<ParticleEngine::Emitter>(), rotation);
    data().addParticle(Vec(3, 0, 0), 0);
    data().setVelocity(Vec(0, 0, 1));
    data().addParticle(Vec(1.005f, 0, 0), 0);
    data().setVelocity(Vec(0, 0, 1));
    run(60);
    data().setParticle(0);
    Vec offset = data().getPosition() - Vec(1, 0, 0);
    EXPECT_NEAR(offset.length(), 2.0f, 1e-4f);
    EXPECT_NEAR(data().getVelocity().length(), 1.0f, 1e-4f);
    EXPECT_GT(data().getPosition()[2], 0.8f) << "moved about 0.96 along the circle";
    data().setParticle(1);
    EXPECT_EQ(data().getPosition()[0], 1.005f);
}

// A burst, then the rate at any frame step; lives lie within the ages and spread over them.
TEST_F(ParticleEngineTest, EmittersFollowTheirRateAndGiveLivesWithinTheAges) {
    const struct {
        const char* name;
        unsigned int burst;
        float perSecond;
        int stepMs, frames;
        unsigned int made, minAge, maxAge;
        std::int64_t lowest, highest;  // life in ms; -1 for never
    } cases[] = {
        {"30 per second for 9.6 s", 0, 30, 16, 600, 288, 0, 0, -1, -1},
        {"fraction carried", 0, 10, 250, 3, 7, 0, 0, -1, -1},
        {"below one per frame", 0, 50, 16, 60, 48, 0, 0, -1, -1},
        {"fixed life", 2000, 0, 16, 0, 2000, 500, 500, 500, 500},
        {"wide range", 2000, 0, 16, 0, 2000, 0, 1000000, 0, 1000000},
        {"swapped bounds", 2000, 0, 16, 0, 2000, 800, 200, 200, 800},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        begin(emitter(c.burst, c.perSecond, c.minAge, c.maxAge));
        std::int64_t now = kStart, lo = c.highest, hi = c.lowest;
        for (int i = 0; i < c.frames; ++i)
            mEngine.update(now += c.stepMs);
        EXPECT_NEAR(double(data().getParticleCount(false)), double(c.made), 1.0);
        for (data().setParticle(-1); data().nextParticle();) {
            const std::int64_t life = data().getMaxTime() == 0 ? -1 : data().getMaxTime() - kStart;
            lo = std::min(lo, life);
            hi = std::max(hi, life);
        }
        EXPECT_GE(lo, c.lowest);
        EXPECT_LE(hi, c.highest);
        EXPECT_GE(hi - lo, (c.highest - c.lowest) * 9 / 10);
    }
}

TEST_F(ParticleEngineTest, ParticlesDieAfterTheirTimeAndABurnOutEndsWithTheLast) {
    for (bool withForces : {true, false}) {
        SCOPED_TRACE(withForces ? "with a force model" : "without");
        begin(SharedPtr<ParticleEngine::Emitter>(),
              SharedPtr<ParticleEngine::ForceModel>(withForces ? new LinearForceModel() : nullptr));
        data().addParticle(Vec(0, 0, 0), kStart + 500);
        mEngine.stop(true);
        mEngine.update(kStart + 500);
        EXPECT_EQ(data().getParticleCount(false), 1u) << "alive at its death time";
        EXPECT_TRUE(mEngine.isRunning());
        mEngine.update(kStart + 501);
        EXPECT_EQ(data().getParticleCount(false), 0u);
        EXPECT_FALSE(mEngine.isRunning());
    }
}

TEST_F(ParticleEngineTest, NothingRunsBeforeStartAndAStopFreezes) {
    mEngine.setEmitter(emitter(0, 1000));
    mEngine.initialize();
    run(10);
    EXPECT_EQ(data().getParticleCount(false), 0u);
    mEngine.start();
    mEngine.update(kStart + 100);
    EXPECT_EQ(data().getParticleCount(false), 100u);
    mEngine.stop(false);
    mEngine.update(kStart + 5000);
    EXPECT_EQ(data().getParticleCount(false), 100u) << "frozen: no emission and no ageing";
}

TEST_F(ParticleEngineTest, RandomCloudsLeaveTheApplicationsRandSequenceAlone) {
    std::srand(42);
    const int expected = std::rand();
    std::srand(42);
    SharedPtr<PointEmitter> cloud = emitter(200, 500);
    cloud->setUseRandomForce(true);
    SharedPtr<LinearForceModel> forces(new LinearForceModel());
    forces->setRandomForce(Vec(1, 1, 1));
    begin(cloud, forces);
    int below = 0, above = 0;
    for (data().setParticle(-1); data().nextParticle();)
        (data().getVelocity()[0] < 0 ? below : above) += 1;
    run(30);
    mEngine.initialize();
    EXPECT_EQ(std::rand(), expected);
    EXPECT_GT(below, 60) << "random start velocities are symmetric";
    EXPECT_GT(above, 60);
}

}  // namespace
