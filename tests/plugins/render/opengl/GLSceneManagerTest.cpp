#include <memory>

#include "GLTestWindow.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "scene/Light.h"

using namespace Velun;
using Dorvan::Matrix;
using Dorvan::SharedPtr;

namespace {

class GLSceneManagerTest : public GLTest::WindowTest {
protected:
    void SetUp() override {
        GLTest::WindowTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        // The view renderer pushes the view matrix once before lights and drawables.
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glPushMatrix();
    }

    static Matrix<float, 4> translation(float x, float y, float z) {
        Matrix<float, 4> m = Matrix<float, 4>::identity();
        m(0, 3) = x;
        m(1, 3) = y;
        m(2, 3) = z;
        return m;
    }

    Light* light(float red, float x = 0.0f) {
        lights.emplace_back(new Light());
        Light* result = lights.back().get();
        result->setDiffuseColor(Color(red, 0.0f, 0.0f, 1.0f));
        result->getTransformedNode().assignWorldTransformation(translation(x, 0.0f, 0.0f));
        return result;
    }

    static GLfloat lightValue(GLenum id, GLenum name, int component = 0) {
        GLfloat values[4] = {};
        glGetLightfv(id, name, values);
        return values[component];
    }

    static GLint integer(GLenum name) {
        GLint value = 0;
        glGetIntegerv(name, &value);
        return value;
    }

    std::vector<std::unique_ptr<Light>> lights;
};

}  // namespace

TEST_F(GLSceneManagerTest, LightsOfThePassBecomeGLLightsAndTheRestGoOff) {
    for (int i = 0; i < 8; ++i)
        glEnable(GL_LIGHT0 + i);
    GLSceneManager scene(context, SharedPtr<RenderSettings>());
    Light* point = light(0.5f, 3.0f);
    point->setLinearAttenuation(0.25f);
    Light* spot = light(0.25f);
    spot->setLightType(Light::Spot);
    spot->setSpotCutoff(30.0f);
    spot->setSpotExponent(2.0f);
    Light* off = light(1.0f);
    off->setEnabled(false);
    Light* directional = light(0.75f);
    directional->setLightType(Light::Directional);
    scene.addLight(point);
    scene.addLight(spot);
    scene.addLight(off);
    scene.addLight(directional);
    EXPECT_EQ(4u, scene.getLightCount());
    scene.setupLights();

    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_TRUE(glIsEnabled(GL_LIGHT0));
    EXPECT_EQ(0.5f, lightValue(GL_LIGHT0, GL_DIFFUSE));
    EXPECT_EQ(0.25f, lightValue(GL_LIGHT0, GL_LINEAR_ATTENUATION));
    EXPECT_EQ(180.0f, lightValue(GL_LIGHT0, GL_SPOT_CUTOFF));
    // The position is given in the light's space, so it lands at its place in eye space.
    EXPECT_EQ(3.0f, lightValue(GL_LIGHT0, GL_POSITION, 0));
    EXPECT_EQ(1.0f, lightValue(GL_LIGHT0, GL_POSITION, 3));

    EXPECT_EQ(30.0f, lightValue(GL_LIGHT1, GL_SPOT_CUTOFF));
    EXPECT_EQ(2.0f, lightValue(GL_LIGHT1, GL_SPOT_EXPONENT));
    EXPECT_EQ(-1.0f, lightValue(GL_LIGHT1, GL_SPOT_DIRECTION, 2));

    EXPECT_FALSE(glIsEnabled(GL_LIGHT2));
    EXPECT_NE(1.0f, lightValue(GL_LIGHT2, GL_DIFFUSE)) << "a disabled light sends nothing";

    EXPECT_EQ(0.0f, lightValue(GL_LIGHT3, GL_POSITION, 3));
    EXPECT_EQ(1.0f, lightValue(GL_LIGHT3, GL_POSITION, 2));
    for (int i = 4; i < 8; ++i)
        EXPECT_FALSE(glIsEnabled(GL_LIGHT0 + i)) << "light " << i;
}

TEST_F(GLSceneManagerTest, ANinthLightReplacesTheFirst) {
    GLSceneManager scene(context, SharedPtr<RenderSettings>());
    for (int i = 0; i < 9; ++i)
        scene.addLight(light(0.1f * (i + 1)));
    scene.setupLights();
    EXPECT_FLOAT_EQ(0.9f, lightValue(GL_LIGHT0, GL_DIFFUSE));
    EXPECT_FLOAT_EQ(0.2f, lightValue(GL_LIGHT1, GL_DIFFUSE));
    for (int i = 0; i < 8; ++i)
        EXPECT_TRUE(glIsEnabled(GL_LIGHT0 + i));
}

TEST_F(GLSceneManagerTest, PassSettingsComeBackOnceAfterAnOverride) {
    SharedPtr<RenderSettings> pass(new RenderSettings());
    pass->setShadingMode(RenderSettings::ShadeFlat);
    GLSceneManager scene(context, pass);
    scene.setupFog();
    EXPECT_EQ(GL_FLAT, integer(GL_SHADE_MODEL));
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_TRUE(glIsEnabled(GL_NORMALIZE));
    EXPECT_FALSE(glIsEnabled(GL_CULL_FACE));
    EXPECT_EQ(GL_CCW, integer(GL_FRONT_FACE));

    SharedPtr<RenderSettings> material(new RenderSettings());
    material->setUseLights(false);
    scene.applyRenderSettings(material, true);
    EXPECT_EQ(GL_SMOOTH, integer(GL_SHADE_MODEL));
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));

    scene.applyRenderSettings(SharedPtr<RenderSettings>(), true);
    EXPECT_EQ(GL_FLAT, integer(GL_SHADE_MODEL));
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));

    // Restored once: a change made since stays until the next override.
    glShadeModel(GL_SMOOTH);
    scene.applyRenderSettings(SharedPtr<RenderSettings>(), true);
    EXPECT_EQ(GL_SMOOTH, integer(GL_SHADE_MODEL));
    scene.applyRenderSettings(SharedPtr<RenderSettings>(), false);
    EXPECT_EQ(GL_SMOOTH, integer(GL_SHADE_MODEL));
}
