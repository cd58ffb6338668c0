#include "support/GLDrawFixture.h"

#include <cmath>

namespace RenderGLTest {

using Velun::Color;

// Fixed-function lighting of a white default material (ambient 0.2, diffuse 0.8, no
// specular) under GL's global ambient of 0.2: a vertex gets
//   0.2 * 0.2 + light ambient * 0.2 + light diffuse * 0.8 * max(0, N.L)
// per enabled light (directional: no attenuation).
class GLLightingTest : public GLDrawTest {
protected:
    // A white quad facing the camera, lit by the pass's lights.
    void addLitQuad(float x, bool normals) {
        QuadSpec shape;
        shape.normals = normals;
        addQuad(root(), x, 0, -5, shape, SharedPtr<Velun::Material>(new Velun::Material()));
    }

    Velun::Light& addDirectionalLight(float tiltRadians) {
        Velun::TransformationNode& place = own(new Velun::TransformationNode());
        place.rotateX(tiltRadians, false);
        Velun::Light& light = own(new Velun::Light());
        light.setLightType(Velun::Light::Directional);
        place.setChild(light);
        root().attachChild(place);
        return light;
    }

    static int lit(float nDotL, float lightAmbient = 0.2f) {
        return toByte(0.04f + lightAmbient * 0.2f + 0.8f * std::max(0.0f, nDotL));
    }
};

TEST_F(GLLightingTest, DirectionalLightShadesByTheAngleToTheNormal) {
    addViewport(addCamera(true));
    addDirectionalLight(0.0f);
    addLitQuad(0, true);
    frame();
    savePicture("light_head_on");
    int const headOn = lit(1.0f);
    EXPECT_TRUE(near(centre(), Rgb{headOn, headOn, headOn}));
}

TEST_F(GLLightingTest, TiltedLightGivesCosineOfTheAngle) {
    addViewport(addCamera(true));
    addDirectionalLight(float(M_PI / 3.0));  // 60 degrees off the normal
    addLitQuad(0, true);
    frame();
    int const tilted = lit(0.5f);
    EXPECT_TRUE(near(centre(), Rgb{tilted, tilted, tilted}));
}

TEST_F(GLLightingTest, DisabledLightLeavesOnlyTheGlobalAmbient) {
    addViewport(addCamera(true));
    addDirectionalLight(0.0f).setEnabled(false);
    addLitQuad(0, true);
    frame();
    int const ambient = toByte(0.04f);
    EXPECT_TRUE(near(centre(), Rgb{ambient, ambient, ambient}));
}

TEST_F(GLLightingTest, ColouredLightTintsTheDiffuseTerm) {
    addViewport(addCamera(true));
    Velun::Light& light = addDirectionalLight(0.0f);
    light.setDiffuseColor(Color(1, 0, 0));
    light.setAmbientColor(Color(0, 0, 0));
    addLitQuad(0, true);
    frame();
    EXPECT_TRUE(near(centre(), Rgb{toByte(0.84f), toByte(0.04f), toByte(0.04f)}));
}

TEST_F(GLLightingTest, GeometryWithoutNormalsFacesItsOwnPlusZ) {
    addViewport(addCamera(true));
    addDirectionalLight(0.0f);
    // First a quad whose normals face away from the light, so that a leftover current
    // normal would darken the second quad, which has none.
    QuadSpec away;
    away.normals = true;
    addQuad(root(), -2, 0, -5, away, SharedPtr<Velun::Material>(new Velun::Material()))
        .rotateY(float(M_PI), true);
    addLitQuad(2, false);
    frame();
    savePicture("light_no_normals");
    int const headOn = lit(1.0f);
    int const dark = lit(-1.0f);
    EXPECT_TRUE(near(pixel(Width / 2 - 13, Height / 2), Rgb{dark, dark, dark}));
    EXPECT_TRUE(near(pixel(Width / 2 + 13, Height / 2), Rgb{headOn, headOn, headOn}));
}

// Exponential fog of density 0.04 towards (0.155, 0.415, 0.545): a fragment at eye
// distance z keeps f = exp(-0.04 z) of its colour.
TEST_F(GLLightingTest, FogBlendsTowardsTheFogColourWithDistance) {
    SharedPtr<Velun::Camera> camera = addCamera(false);
    camera->getCamSettings().getRenderSettings()->setUseFog(true);
    addViewport(camera);
    addQuad(root(), -3, 0, -5, QuadSpec(), colorMaterial(Color(1, 0, 0)));
    addQuad(root(), 6, 0, -10, QuadSpec(), colorMaterial(Color(1, 0, 0)));
    frame();
    savePicture("fog");
    auto fogged = [](float z) {
        float f = std::exp(-0.04f * z);
        return Rgb{toByte(f + (1 - f) * 0.155f), toByte((1 - f) * 0.415f), toByte((1 - f) * 0.545f)};
    };
    EXPECT_TRUE(near(pixel(Width / 2 - 19, Height / 2), fogged(5)));
    EXPECT_TRUE(near(pixel(Width / 2 + 19, Height / 2), fogged(10)));

    camera->getCamSettings().getRenderSettings()->setUseFog(false);
    frame();
    EXPECT_TRUE(near(pixel(Width / 2 + 19, Height / 2), Rgb{255, 0, 0}, 0));
}

}  // namespace RenderGLTest
