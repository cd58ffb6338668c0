#include "GLTestWindow.h"
#include "geometry/VertexData.h"
#include "plugins/render/opengl/GLRenderEngine.h"

using namespace Velun;

namespace {

class GLSDLRenderWindowTest : public GLTest::WindowTest {};

}  // namespace

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
