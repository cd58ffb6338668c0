#include "plugins/render/opengl/GLRenderPlugin.h"

#include "core/VelunCore.h"
#include "plugins/render/opengl/GLRenderEngine.h"
#include "render/RenderManager.h"

namespace Velun {

GLRenderPlugin::GLRenderPlugin() : mEngine(nullptr) {}

GLRenderPlugin::~GLRenderPlugin() { unregisterPlugin(); }

int GLRenderPlugin::registerPlugin() {
    if (mEngine)
        return 0;
    mEngine = new GLRenderEngine();
    VelunCore::getSingleton().getRenderManager().registerRenderer("opengl", mEngine);
    return 0;
}

int GLRenderPlugin::unregisterPlugin() {
    if (!mEngine)
        return 1;
    // The manager may have ended first; then it has already dropped its windows.
    if (RenderManager* renderManager = VelunCore::getSingleton().findRenderManager())
        renderManager->unregisterRenderer(mEngine);
    mEngine->shutdown();
    delete mEngine;
    mEngine = nullptr;
    return 1;
}

}  // namespace Velun
