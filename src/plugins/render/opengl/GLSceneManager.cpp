#include "plugins/render/opengl/GLSceneManager.h"

#include <GL/glew.h>

#include "plugins/render/opengl/GLRenderContext.h"
#include "scene/Light.h"

namespace Velun {

namespace {

// Fixed-function GL guarantees this many lights.
const unsigned int kMaxLights = 8;

void sendColor(GLenum light, GLenum name, Color const& color) {
    GLfloat const values[] = {color.r, color.g, color.b, color.a};
    glLightfv(light, name, values);
}

}  // namespace

GLSceneManager::GLSceneManager(GLRenderContext* context, Dorvan::SharedPtr<RenderSettings> settings)
    : mDefaultsApplied(false), mContext(context), mSettings(settings), mViewKnown(false),
      mView(Dorvan::Matrix<float, 4>::identity()) {
    // A pass without settings has the defaults, so a material's override is undone in
    // full and not only in part.
    if (!mSettings)
        mSettings = Dorvan::SharedPtr<RenderSettings>(new RenderSettings());
}

GLSceneManager::~GLSceneManager() {}

void GLSceneManager::addLight(Light* light) { mLights.add(light); }

unsigned int GLSceneManager::getLightCount() const { return mLights.size(); }

void GLSceneManager::loadMatrix(Dorvan::Matrix<float, 4> const& m) { glLoadTransposeMatrixf(m.m); }

void GLSceneManager::multMatrix(Dorvan::Matrix<float, 4> const& m) {
    if (!m.isIdentity())
        glMultTransposeMatrixf(m.m);
}

void GLSceneManager::setViewMatrix(Dorvan::Matrix<float, 4> const& view) {
    mView = view;
    mViewKnown = true;
}

void GLSceneManager::setWorldTransformation(Dorvan::Matrix<float, 4> const& m) {
    // The same product GL forms, element by element in the same order.
    if (mViewKnown) {
        glLoadTransposeMatrixf((mView * m).m);
        return;
    }
    glPopMatrix();
    glPushMatrix();
    multMatrix(m);
}

void GLSceneManager::setupLights() {
    mContext->setEnabled(GL_LIGHTING, mSettings->useLights());
    unsigned int const count = mLights.size();
    for (unsigned int i = 0; i < count; ++i) {
        Light* light = mLights[i];
        GLenum const id = GL_LIGHT0 + (i % kMaxLights);
        if (!light->isEnabled()) {
            glDisable(id);
            continue;
        }
        sendColor(id, GL_AMBIENT, light->getAmbientColor());
        sendColor(id, GL_DIFFUSE, light->getDiffuseColor());
        sendColor(id, GL_SPECULAR, light->getSpecularColor());
        glLightf(id, GL_CONSTANT_ATTENUATION, light->getConstantAttenuation());
        glLightf(id, GL_LINEAR_ATTENUATION, light->getLinearAttenuation());
        glLightf(id, GL_QUADRATIC_ATTENUATION, light->getQuadraticAttenuation());
        // Position and direction are given in the light's own space.
        setWorldTransformation(light->getTransformedNode().getWorldTransformation());
        if (light->getLightType() == Light::Directional) {
            GLfloat const position[] = {0.0f, 0.0f, 1.0f, 0.0f};
            glLightfv(id, GL_POSITION, position);
        } else {
            GLfloat const position[] = {0.0f, 0.0f, 0.0f, 1.0f};
            glLightfv(id, GL_POSITION, position);
        }
        if (light->getLightType() == Light::Spot) {
            GLfloat const direction[] = {0.0f, 0.0f, -1.0f};
            glLightfv(id, GL_SPOT_DIRECTION, direction);
            glLightf(id, GL_SPOT_CUTOFF, light->getSpotCutoff());
            glLightf(id, GL_SPOT_EXPONENT, light->getSpotExponent());
        } else {
            // A former spot on this GL light would otherwise keep its cone.
            glLightf(id, GL_SPOT_CUTOFF, 180.0f);
        }
        glEnable(id);
    }
    // Lights of an earlier pass or frame must not shine into this one.
    for (unsigned int i = count; i < kMaxLights; ++i)
        glDisable(GL_LIGHT0 + i);
}

void GLSceneManager::setupFog() {
    if (mSettings->useFog()) {
        glEnable(GL_FOG);
        glFogi(GL_FOG_MODE, GL_EXP);
        GLfloat const color[] = {0.155f, 0.415f, 0.545f, 1.0f};
        glFogfv(GL_FOG_COLOR, color);
        glFogf(GL_FOG_DENSITY, 0.04f);
    } else {
        glDisable(GL_FOG);
    }
}

void GLSceneManager::applyRenderSettings(Dorvan::SharedPtr<RenderSettings> settings, bool restoreIfNull) {
    if (!settings) {
        if (restoreIfNull)
            restoreDefaultSettings();
        return;
    }
    glEnable(GL_DEPTH_TEST);
    // Winding and face are stated, but culling stays off: both sides are drawn.
    glFrontFace(GL_CCW);
    glCullFace(GL_BACK);
    glEnable(GL_NORMALIZE);
    glShadeModel(settings->getShadingMode() == RenderSettings::ShadeSmooth ? GL_SMOOTH : GL_FLAT);
    mContext->setEnabled(GL_LIGHTING, settings->useLights());
    mDefaultsApplied = false;
}

void GLSceneManager::restoreDefaultSettings() {
    if (mDefaultsApplied)
        return;
    applyRenderSettings(mSettings, false);
    mDefaultsApplied = true;
}

}  // namespace Velun
