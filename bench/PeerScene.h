#pragma once

// What the engine's drawing benchmarks share with the peers' draw programs: the window,
// and a scene with the peers' camera settings and light. Include after the engine's
// headers and draw_scene.h.

#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/GLRenderEngine.h"
#include "plugins/render/opengl/GLScreenshot.h"
#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"
#include "render/RenderManager.h"
#include "render/RenderTarget.h"
#include "render/Viewport.h"
#include "scene/Branch.h"
#include "scene/Camera.h"
#include "scene/Light.h"
#include "scene/Matrix.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"

namespace PeerScene {

// A directional light shines from its node's +Z: turn +Z into the direction towards
// the light (the peers' light direction, mirrored into the engine's right-handed world).
inline Dorvan::Matrix<float, 4> lightRotation() {
    const float* L = cubescene::kLightDir;
    const float ll = std::sqrt(L[0] * L[0] + L[1] * L[1] + L[2] * L[2]);
    const float z[3] = {-L[0] / ll, -L[1] / ll, L[2] / ll};
    float x[3] = {z[2], 0, -z[0]};  // (0, 1, 0) x z
    const float xl = std::sqrt(x[0] * x[0] + x[2] * x[2]);
    x[0] /= xl;
    x[2] /= xl;
    const float y[3] = {z[1] * x[2] - z[2] * x[1], z[2] * x[0] - z[0] * x[2], z[0] * x[1] - z[1] * x[0]};
    Dorvan::Matrix<float, 4> r = Dorvan::Matrix<float, 4>::identity();
    for (int i = 0; i < 3; ++i) {
        r.m[i * 4 + 0] = x[i];
        r.m[i * 4 + 1] = y[i];
        r.m[i * 4 + 2] = z[i];
    }
    r.mIdentity = false;
    return r;
}

// The engine with one kWin x kWin window, made once for the whole program.
struct Engine {
    Velun::GLSDLRenderWindow* window = nullptr;
    explicit Engine(char const* title) {
        Velun::VelunCore& core = Velun::VelunCore::getSingleton();
        core.startup();
        core.setup(true);
        // A loaded machine now and then refuses an X connection: try a few times.
        for (int attempt = 0; attempt < 5 && !window; ++attempt) {
            if (attempt > 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
            core.getRenderManager().initializeRenderer(false);
            window = dynamic_cast<Velun::GLSDLRenderWindow*>(core.getRenderManager().createRenderWindow(
                title, cubescene::kWin, cubescene::kWin, false, 0, 0, nullptr));
        }
    }
};

// A scene shown in the window through a camera with the peers' settings, lit by the
// peers' light; a benchmark places the camera and adds what it draws.
class Stage {
public:
    explicit Stage(Velun::GLSDLRenderWindow& window)
        : mWindow(window), mScene(&Velun::VelunCore::getSingleton().getSceneManager().createSceneGraph()) {
        mCamera = Dorvan::SharedPtr<Velun::Camera>(new Velun::Camera());
        Velun::CameraSettings& settings = mCamera->getCamSettings();
        settings.setFovY(cubescene::kFovYDeg);
        settings.setNearDistance(cubescene::kNear);
        settings.setFarDistance(cubescene::kFar);

        mLightPlace.reset(new Velun::TransformationNode());
        mLightPlace->setLocalTransformation(lightRotation());
        mLight.reset(new Velun::Light());
        mLight->setLightType(Velun::Light::Directional);
        mLight->setAmbientColor(Velun::Color(0, 0, 0));
        mLight->setSpecularColor(Velun::Color(0, 0, 0));
        mLightPlace->setChild(*mLight);
        root().attachChild(*mLightPlace);

        Dorvan::SharedPtr<Velun::RenderTarget> target(new Velun::RenderTarget());
        Dorvan::SharedPtr<Velun::Viewport> viewport(new Velun::Viewport(0.0f, 0.0f, 1.0f, 1.0f));
        viewport->attachCamera(mCamera);
        target->attachViewport(viewport);
        mWindow.attachRenderTarget(target);
    }

    virtual ~Stage() {
        mWindow.detachRenderTarget();
        mLight.reset();
        mLightPlace.reset();
        mCamera = Dorvan::SharedPtr<Velun::Camera>();
        Velun::VelunCore::getSingleton().getSceneManager().deleteSceneGraph(*mScene);
    }

    Velun::Branch& root() { return *mScene->getRoot(); }
    Velun::Camera& camera() { return *mCamera; }

    // What the main loop does for this scene and window in one pass.
    void frame() {
        std::int64_t now = Velun::VelunCore::getSingleton().getTimerManager().getTimestamp();
        mScene->getUpdateTraverser()->run(now);
        if (cubescene::no_raster())
            glEnable(cubescene::kRasterizerDiscard);
        mWindow.render(now);
        if (cubescene::no_raster())
            glDisable(cubescene::kRasterizerDiscard);
    }

    // One frame per benchmark iteration, after warm-up frames; reports the buffer loads per
    // frame and the coverage.
    void timeFrames(benchmark::State& state) {
        Velun::GLRenderContext& context = *mWindow.getGLRenderContext();
        for (int i = 0; i < cubescene::kWarmupFrames; ++i)
            frame();
        glFinish();
        unsigned int loads = context.getBufferLoadCount();
        for (auto _ : state)
            frame();
        glFinish();
        state.counters["buffer_loads_per_frame"] =
            double(context.getBufferLoadCount() - loads) / double(state.iterations());
        state.counters["coverage"] = coverage();
    }

    // Fraction of the window that is not background, from a frame drawn but not swapped.
    double coverage() {
        static_cast<Velun::GLRenderEngine*>(mWindow.getRenderEngine())
            ->renderTarget(mWindow.getRenderTarget().get(), mWindow.getGLRenderContext(), cubescene::kWin,
                           cubescene::kWin);
        return backBufferCoverage();
    }

    // Fraction of the back buffer that is not black.
    static double backBufferCoverage() {
        std::vector<unsigned char> rgb;
        Velun::GLScreenshot::readPixels(GL_BACK, 0, 0, cubescene::kWin, cubescene::kWin, rgb);
        long covered = 0;
        for (std::size_t i = 0; i < rgb.size(); i += 3)
            covered += rgb[i] || rgb[i + 1] || rgb[i + 2];
        return double(covered) / (cubescene::kWin * cubescene::kWin);
    }

    Stage(Stage const&) = delete;
    Stage& operator=(Stage const&) = delete;

private:
    Velun::GLSDLRenderWindow& mWindow;
    Velun::SceneGraph* mScene;
    Dorvan::SharedPtr<Velun::Camera> mCamera;
    std::unique_ptr<Velun::TransformationNode> mLightPlace;
    std::unique_ptr<Velun::Light> mLight;
};

}  // namespace PeerScene
