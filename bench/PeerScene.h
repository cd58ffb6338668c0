#pragma once

// What the engine's benchmarks share with the peers' draw programs: the window they all
// draw into and the peers' light. Include after the engine's headers and draw_scene.h.

#include <chrono>
#include <cmath>
#include <thread>

#include "core/VelunCore.h"
#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"
#include "render/RenderManager.h"
#include "scene/Matrix.h"

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

}  // namespace PeerScene
