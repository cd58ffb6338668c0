#include "plugins/render/opengl/GLObjectRenderer.h"

#include <algorithm>

#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "geometry/Drawable.h"
#include "material/Material.h"
#include "plugins/render/opengl/GLError.h"
#include "plugins/render/opengl/GLMaterialManager.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "scene/Node.h"
#include "scene/ObjectNode.h"

namespace Velun {

using Dorvan::SharedPtr;

namespace {
std::int64_t currentTimestamp() {
    TimerManager* timer = VelunCore::getSingleton().findTimerManager();
    return timer ? timer->getTimestamp() : 0;
}
}  // namespace

GLObjectRenderer::GLObjectRenderer(GLRenderContext* context, SharedPtr<RenderSettings> settings)
    : mSettings(settings), mMaterialManager(nullptr), mSceneManager(nullptr),
      mGeometryRenderer(context, settings), mStamp(currentTimestamp()) {}

GLObjectRenderer::~GLObjectRenderer() {}

void GLObjectRenderer::setMaterialManager(GLMaterialManager* manager) {
    mMaterialManager = manager;
    mGeometryRenderer.setMaterialManager(manager);
}

void GLObjectRenderer::addDrawable(ObjectNode* object, Node& node, Drawable* drawable, float distance) {
    SharedPtr<Material> material = drawable->getMaterial(0);
    if (material.isNull())
        material = object->getDefaultMaterial(0);
    RenderEntry entry = {distance, object, drawable, &node};
    if (!material.isNull() && material->useBlending())
        mBlended.push_back(entry);
    else
        mOpaque.push_back(entry);
}

void GLObjectRenderer::renderAll() {
    mStamp = currentTimestamp();
    glDepthMask(GL_TRUE);
    for (RenderEntry const& entry : mOpaque)
        renderDrawable(entry);
    // Stable: entries at the same distance keep the order of the walk.
    std::stable_sort(mBlended.begin(), mBlended.end(),
                     [](RenderEntry const& a, RenderEntry const& b) { return a.distance > b.distance; });
    glDepthMask(GL_FALSE);
    for (RenderEntry const& entry : mBlended)
        renderDrawable(entry);
    glDepthMask(GL_TRUE);
}

void GLObjectRenderer::renderDrawable(RenderEntry const& entry) {
    mSceneManager->setWorldTransformation(entry.node->getTransformedNode().getWorldTransformation());
    mGeometryRenderer.drawDrawable(entry.drawable, entry.object, mStamp);
    GLenum code = glGetError();
    if (code != GL_NO_ERROR)
        logGLError("render.opengl.GLObjectRenderer", "GL Error: ", code);
}

}  // namespace Velun
