#include <algorithm>

#include "GLTestWindow.h"
#include "core/ProcessManager.h"
#include "geometry/VertexData.h"
#include "plugins/render/opengl/GLCapabilities.h"
#include "plugins/render/opengl/GLRenderEngine.h"

using namespace Velun;

namespace {

class GLSDLRenderWindowTest : public GLTest::WindowTest {};

bool allBlack(std::vector<unsigned char> const& pixels) {
    return std::all_of(pixels.begin(), pixels.end(), [](unsigned char c) { return c == 0; });
}

}  // namespace

TEST_F(GLSDLRenderWindowTest, TheOpenGLEngineMakesTheDefaultWindows) {
    RenderManager& renderManager = core.getRenderManager();
    EXPECT_EQ(window, renderManager.getPrimaryRenderWindow());
    EXPECT_EQ(window->getRenderEngine(), context->getRenderEngine());
    EXPECT_NE(nullptr, dynamic_cast<GLCapabilities*>(window->getRenderEngine()->getCapabilities()));
    EXPECT_EQ(kWidth, window->getWidth());
    EXPECT_EQ(kHeight, window->getHeight());
    EXPECT_TRUE(window->isDoubleBuffered());
    EXPECT_GT(window->getColorDepth(), 0);
    EXPECT_EQ(context, window->getRenderContext());
}

TEST_F(GLSDLRenderWindowTest, CreateReadsTheExtensionsAndAsksForADeepDepthBuffer) {
    // llvmpipe has both extensions.
    EXPECT_TRUE(context->usesVertexBuffers());
    EXPECT_TRUE(context->usesIndexBuffers());
    EXPECT_TRUE(context->hasPointSprites());
    EXPECT_GE(context->getMaxTextureUnits(), 2u);
    GLint depthBits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    EXPECT_GE(depthBits, 24);
    GLint alignment = 0;
    glGetIntegerv(GL_UNPACK_ALIGNMENT, &alignment);
    EXPECT_EQ(1, alignment);
}

TEST_F(GLSDLRenderWindowTest, AWindowWithoutATargetShowsBlackInEveryFrame) {
    // What was drawn and swapped stays readable, so black below comes from the frame.
    glClearColor(1.0f, 0.5f, 0.25f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    SDL_GL_SwapBuffers();
    std::vector<unsigned char> const drawn = readShown();
    ASSERT_EQ(255, drawn[0]);
    ASSERT_EQ(64, drawn[2]);

    for (int frame = 0; frame < 3; ++frame) {
        glClearColor(1.0f, 0.5f, 0.25f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        core.getProcessManager().updateSubsystem(6, true);
        EXPECT_TRUE(allBlack(readShown())) << "frame " << frame;
    }
    EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
}

TEST_F(GLSDLRenderWindowTest, WarpingMovesThePointerInsideTheWindow) {
    EXPECT_TRUE(window->warpCursor(20, 30));
    SDL_PumpEvents();
    int x = -1;
    int y = -1;
    SDL_GetMouseState(&x, &y);
    EXPECT_EQ(20, x);
    EXPECT_EQ(30, y);
}

TEST_F(GLSDLRenderWindowTest, DestroyingTheWindowDeletesItsGLObjects) {
    VertexData data;
    data.setUseVertex(true);
    data.initialize(3, 3);
    for (int i = 0; i < 3; ++i) {
        data.addVertex();
        data.setVertex(float(i), 0.0f, 0.0f);
    }
    ASSERT_TRUE(context->updateVertexBuffer(data, VertexDataSet::Part::Vertex, 1));
    auto* ids = static_cast<GLRenderContext::DataIdSet*>(data.getResourceData(context->getProviderId()));
    ASSERT_NE(nullptr, ids);
    unsigned int const buffer = ids->getVertexBuffer();
    ASSERT_TRUE(glIsBuffer(buffer));

    unsigned int const provider = context->getProviderId();
    ASSERT_TRUE(core.getRenderManager().destroyRenderWindow(window->getId()));
    // SDL's surface and its GL context outlive the window object.
    EXPECT_FALSE(glIsBuffer(buffer));
    EXPECT_EQ(nullptr, data.getResourceData(provider));

    // A new window has a new context that uploads the data again on its own.
    RenderWindow* second = core.getRenderManager().createRenderWindow("again", 32, 32, false, 0, 0, nullptr);
    ASSERT_NE(nullptr, second);
    GLRenderContext* secondContext = static_cast<GLSDLRenderWindow*>(second)->getGLRenderContext();
    EXPECT_NE(provider, secondContext->getProviderId());
    EXPECT_TRUE(secondContext->updateVertexBuffer(data, VertexDataSet::Part::Vertex, 1));
    EXPECT_EQ(1u, secondContext->getBufferLoadCount());
}
