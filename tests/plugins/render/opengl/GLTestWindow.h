#pragma once

#include <GL/glew.h>
#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "core/LogManager.h"
#include "core/VelunCore.h"
#include "foundation/CowMemPtr.h"
#include "plugins/render/opengl/GLRenderContext.h"
#include "plugins/render/opengl/sdl/GLSDLRenderWindow.h"
#include "render/RenderManager.h"
#include "support/ChannelLog.h"
#include "texture/TextureData.h"
#include "texture/TextureInfo.h"

namespace GLTest {

using VelunTest::ChannelLog;

// Xvfb resets itself when its last client leaves, as the previous test's window did,
// and refuses connections for a moment; the engine then takes SDL video over as it is.
inline bool waitForDisplay() {
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (SDL_InitSubSystem(SDL_INIT_VIDEO) == 0)
            return true;
        SDL_Delay(20);
    }
    return false;
}

// A started and set-up engine with one window of the "opengl" engine open under the
// X display (Xvfb in the test runs).
class WindowTest : public testing::Test {
protected:
    static constexpr int kWidth = 64;
    static constexpr int kHeight = 48;

    void SetUp() override {
        if (!std::getenv("DISPLAY"))
            GTEST_SKIP() << "the GL window needs an X display (run under xvfb-run)";
        ASSERT_TRUE(waitForDisplay()) << SDL_GetError();
        core.startup();
        core.getLogManager().registerBackend(log);
        core.setup(true);
        // Whether a sound device opens depends on the machine; these tests look at GL.
        log.dropChannel("plugins.sound.fmod");
        Velun::RenderManager& renderManager = core.getRenderManager();
        renderManager.initializeRenderer(false);
        window = static_cast<Velun::GLSDLRenderWindow*>(
            renderManager.createRenderWindow(windowName(), kWidth, kHeight, false, 0, 0, nullptr));
        ASSERT_NE(nullptr, window);
        context = window->getGLRenderContext();
        ASSERT_EQ(GLenum(GL_NO_ERROR), glGetError());
    }

    void TearDown() override {
        if (core.isStarted())
            core.shutdown();
    }

    virtual std::string windowName() const { return "velun gl test"; }

    // The last frame the window swapped, bottom row first, RGB. Read from the back
    // buffer: Xvfb keeps no contents for the front buffer (it reads black), while Mesa's
    // software path leaves the swapped frame in the back buffer.
    std::vector<unsigned char> readShown() {
        std::vector<unsigned char> pixels(kWidth * kHeight * 3, 0x55);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadBuffer(GL_BACK);
        glReadPixels(0, 0, kWidth, kHeight, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
        return pixels;
    }

    // Waits until the engine clock has moved on, so a later stamp differs from this one.
    static void nextMillisecond() { SDL_Delay(2); }

    static Dorvan::SharedPtr<Velun::TextureSource> image(unsigned int width, unsigned int height,
                                                         Velun::Color::Format format,
                                                         std::vector<unsigned char> const& bytes) {
        Velun::TextureInfo info;
        info.setWidth(width);
        info.setHeight(height);
        info.setDepth(1);
        info.setDataType(Velun::DataType::UnsignedByte);
        info.setColorFormat(format);
        Dorvan::CowMemPtr<void> data;
        data.alloc(static_cast<unsigned int>(bytes.size()));
        std::memcpy(data.get(), bytes.data(), bytes.size());
        return Dorvan::SharedPtr<Velun::TextureSource>(new Velun::TextureData(info, data));
    }

    Velun::VelunCore& core = Velun::VelunCore::getSingleton();
    ChannelLog log;
    Velun::GLSDLRenderWindow* window = nullptr;
    Velun::GLRenderContext* context = nullptr;
};

}  // namespace GLTest
