#include "logic/VelocityModifier.h"

#include <gtest/gtest.h>

#include "support/Engine.h"

#include <cmath>

#include "core/VelunCore.h"
#include "logic/EventManager.h"
#include "scene/Branch.h"
#include "scene/Light.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "scene/UpdateTraverser.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace {

const float HalfPi = 1.5707963f;

float tx(Transformation const& t) { return t.getLocalTransformation()(0, 3); }
float ty(Transformation const& t) { return t.getLocalTransformation()(1, 3); }
float tz(Transformation const& t) { return t.getLocalTransformation()(2, 3); }

using VelocityModifierTest = VelunTest::EngineTest;

TEST_F(VelocityModifierTest, MovesBySpeedTimesElapsedTimeAndNotAtFirstRun) {
    Transformation transformation;
    VelocityModifier modifier(transformation);
    modifier.setTranslateX(1.0f);
    modifier.setState(LogicElement::StateRunning);

    EXPECT_EQ(0, modifier.run(1000));
    EXPECT_FLOAT_EQ(0.0f, tx(transformation));
    EXPECT_EQ(0, modifier.run(1500));
    EXPECT_FLOAT_EQ(0.5f, tx(transformation));
    modifier.run(3500);
    EXPECT_FLOAT_EQ(2.5f, tx(transformation));
}

TEST_F(VelocityModifierTest, DisabledOrReadyModifierDoesNotMoveAndPausesAreNotCaughtUp) {
    Transformation transformation;
    VelocityModifier modifier(transformation);
    modifier.setTranslateZ(1.0f);

    modifier.run(1000);
    modifier.run(2000);
    EXPECT_FLOAT_EQ(0.0f, tz(transformation));

    modifier.setState(LogicElement::StateReady);
    modifier.run(3000);
    modifier.run(4000);
    EXPECT_FLOAT_EQ(0.0f, tz(transformation));

    // Ready kept the time: only the last frame counts.
    modifier.setState(LogicElement::StateRunning);
    modifier.run(4250);
    EXPECT_FLOAT_EQ(0.25f, tz(transformation));

    // After a stop the first run only takes the time again.
    modifier.setState(LogicElement::StateDisabled);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(9000);
    EXPECT_FLOAT_EQ(0.25f, tz(transformation));
    modifier.run(9500);
    EXPECT_FLOAT_EQ(0.75f, tz(transformation));
}

TEST_F(VelocityModifierTest, WaitsForItsTransformationWithoutStoringThePause) {
    VelocityModifier modifier;
    modifier.setTranslateX(1.0f);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(1000);
    modifier.run(5000);

    Transformation transformation;
    modifier.setTransformation(transformation);
    EXPECT_EQ(&transformation, modifier.getTransformation());
    modifier.run(5100);
    EXPECT_NEAR(0.1f, tx(transformation), 1e-6f);
}

TEST_F(VelocityModifierTest, TranslationFollowsParentOrOwnAxes) {
    Transformation parentAxes;
    Transformation ownAxes;
    parentAxes.rotateZ(HalfPi, false);
    ownAxes.rotateZ(HalfPi, false);
    VelocityModifier alongParent(parentAxes);
    VelocityModifier alongOwn(ownAxes);
    alongOwn.setTransformGlobal(true);
    EXPECT_TRUE(alongOwn.doTransformGlobal());
    for (VelocityModifier* m : {&alongParent, &alongOwn}) {
        m->setTranslateX(1.0f);
        m->setState(LogicElement::StateRunning);
        m->run(1000);
        m->run(2000);
    }
    EXPECT_NEAR(1.0f, tx(parentAxes), 1e-6f);
    EXPECT_NEAR(0.0f, ty(parentAxes), 1e-6f);
    EXPECT_NEAR(0.0f, tx(ownAxes), 1e-6f);
    EXPECT_NEAR(1.0f, ty(ownAxes), 1e-6f);
}

TEST_F(VelocityModifierTest, RotationSpinsTheNodeInPlace) {
    Transformation transformation;
    transformation.translate(5.0f, 0.0f, 0.0f, false);
    VelocityModifier modifier(transformation);
    modifier.setRotateY(HalfPi);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(1000);
    modifier.run(2000);

    Dorvan::Matrix<float, 4> const& m = transformation.getLocalTransformation();
    EXPECT_NEAR(5.0f, m(0, 3), 1e-5f);
    EXPECT_NEAR(0.0f, m(2, 3), 1e-5f);
    // Local +Z now points along +X.
    EXPECT_NEAR(1.0f, m(0, 2), 1e-5f);
    EXPECT_NEAR(0.0f, m(2, 2), 1e-5f);
}

TEST_F(VelocityModifierTest, MarksItsNodeInEveryFrameEvenAtZeroSpeed) {
    SceneGraph& scene = VelunCore::getSingleton().getSceneManager().createSceneGraph();
    TransformationNode node;
    Light light;
    node.setChild(light);
    scene.getRoot()->attachChild(node);
    scene.getUpdateTraverser()->run(0);
    ASSERT_EQ(Node::StatusUpdated, node.getNodeStatus());

    VelocityModifier modifier(node);
    modifier.setState(LogicElement::StateRunning);
    modifier.run(1000);
    EXPECT_EQ(Node::StatusUpdated, node.getNodeStatus());
    modifier.run(1016);
    EXPECT_EQ(Node::StatusModified, node.getNodeStatus());
    scene.getRoot()->detachChild(node.getNodeId());
}

}  // namespace
