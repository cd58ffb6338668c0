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
    RenderEntry entry = {distance, object, drawable, &node, material};
    if (!material.isNull() && material->useBlending())
        mBlended.push_back(entry);
    else
        mOpaque.push_back(entry);
}

void GLObjectRenderer::renderAll() {
    mStamp = currentTimestamp();
    glDepthMask(GL_TRUE);
    renderList(mOpaque);
    // Stable: entries at the same distance keep the order of the walk.
    std::stable_sort(mBlended.begin(), mBlended.end(),
                     [](RenderEntry const& a, RenderEntry const& b) { return a.distance > b.distance; });
    glDepthMask(GL_FALSE);
    renderList(mBlended);
    glDepthMask(GL_TRUE);
}

// A large scene no longer fits the caches by the time it is drawn: the nodes and
// drawables a few entries ahead are fetched while this one draws.
void GLObjectRenderer::renderList(std::vector<RenderEntry> const& list) {
    std::size_t const count = list.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i + 2 < count) {
            char const* node = reinterpret_cast<char const*>(list[i + 2].node);
            char const* drawable = reinterpret_cast<char const*>(list[i + 2].drawable);
            __builtin_prefetch(node + 64);
            __builtin_prefetch(node + 128);
            __builtin_prefetch(drawable);
            __builtin_prefetch(drawable + 64);
        }
        renderDrawable(list[i]);
    }
}

void GLObjectRenderer::renderDrawable(RenderEntry const& entry) {
    mSceneManager->setWorldTransformation(entry.node->getTransformedNode().getWorldTransformation());
    mGeometryRenderer.drawDrawable(entry.drawable, entry.object, mStamp, entry.material);
    GLenum code = glGetError();
    if (code != GL_NO_ERROR)
        logGLError("render.opengl.GLObjectRenderer", "GL Error: ", code);
}

}  // namespace Velun
