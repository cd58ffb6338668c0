#include "scene/Light.h"

#include "SceneFixture.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/UpdateTraverser.h"

using namespace Velun;

namespace {

class LightTest : public SceneTest::EngineTest {};

TEST_F(LightTest, DefaultsAreThoseOfAWhitePointLight) {
    Light light("sun");
    EXPECT_EQ(Node::TypeLight, light.getNodeType());
    EXPECT_EQ(Light::PointLight, light.getLightType());
    EXPECT_TRUE(light.isEnabled());
    EXPECT_EQ(Color(0.2f, 0.2f, 0.2f, 1.0f), light.getAmbientColor());
    EXPECT_EQ(Color(1.0f, 1.0f, 1.0f, 1.0f), light.getDiffuseColor());
    EXPECT_EQ(Color(1.0f, 1.0f, 1.0f, 1.0f), light.getSpecularColor());
    EXPECT_FLOAT_EQ(45.0f, light.getSpotCutoff());
    EXPECT_FLOAT_EQ(1.0f, light.getSpotExponent());
    EXPECT_FLOAT_EQ(1.0f, light.getConstantAttenuation());
    EXPECT_FLOAT_EQ(0.02f, light.getLinearAttenuation());
    EXPECT_FLOAT_EQ(0.0f, light.getQuadraticAttenuation());
    EXPECT_EQ(BoundingVolume::StateInfinite, light.getBoundingVolume()->getState());
}

TEST_F(LightTest, KeepsItsInfiniteVolumeAndMakesItsGroupsInfinite) {
    SceneGraph& scene = VelunCore::getSingleton().getSceneManager().createSceneGraph();
    TransformationNode place;
    Light light;
    place.translate(1.0f, 2.0f, 3.0f, false);
    place.setChild(light);
    scene.getRoot()->attachChild(place);
    scene.getUpdateTraverser()->run(0);
    place.translate(1.0f, 0.0f, 0.0f, false);
    scene.getUpdateTraverser()->run(0);
    EXPECT_EQ(BoundingVolume::StateInfinite, light.getBoundingVolume()->getState());
    EXPECT_EQ(BoundingVolume::StateInfinite, place.getTransformedNode().getBoundingVolume().getState());
    scene.getRoot()->detachChilds();
    place.detachChild();
}

TEST_F(LightTest, AccessorsMarkNothing) {
    SceneGraph& scene = VelunCore::getSingleton().getSceneManager().createSceneGraph();
    Light light;
    scene.getRoot()->attachChild(light);
    scene.getUpdateTraverser()->run(0);
    Node::NodeStatus before = light.getNodeStatus();
    Node::NodeStatus rootBefore = scene.getRoot()->getNodeStatus();

    light.setLightType(Light::Spot);
    light.setEnabled(false);
    light.setDiffuseColor(Color(1.0f, 0.5f, 0.0f));
    light.getAmbientColor().r = 0.4f;
    light.setSpotCutoff(30.0f);
    light.setSpotExponent(4.0f);
    light.setConstantAttenuation(0.5f);
    light.setLinearAttenuation(0.1f);
    light.setQuadraticAttenuation(0.01f);

    EXPECT_EQ(before, light.getNodeStatus());
    EXPECT_EQ(rootBefore, scene.getRoot()->getNodeStatus());
    EXPECT_EQ(Light::Spot, light.getLightType());
    EXPECT_FALSE(light.isEnabled());
    EXPECT_EQ(Color(1.0f, 0.5f, 0.0f), light.getDiffuseColor());
    EXPECT_FLOAT_EQ(0.4f, light.getAmbientColor().r);
    EXPECT_FLOAT_EQ(30.0f, light.getSpotCutoff());
    EXPECT_FLOAT_EQ(0.01f, light.getQuadraticAttenuation());
    scene.getRoot()->detachChilds();
}

}  // namespace
