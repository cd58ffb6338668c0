#include <cstdlib>

#include "GLTestWindow.h"
#include "core/ProcessManager.h"
#include "geometry/IndexData.h"
#include "geometry/VertexData.h"
#include "texture/Texture2D.h"

using namespace Velun;

namespace {

class GLRenderContextTest : public GLTest::WindowTest {
protected:
    // A triangle with positions and texture coordinates, no colours.
    static void fill(VertexData& data) {
        data.setUseVertex(true);
        data.setUseTexCoordinates(true);
        data.addTextureIndex(0);
        data.initialize(3, 3);
        for (int i = 0; i < 3; ++i) {
            data.addVertex();
            data.setVertex(float(i), float(i * i), 0.0f);
            data.setTexCoordinate(0.5f * i, 0.0f, 0);
        }
    }

    GLRenderContext::DataIdSet* ids(VertexData& data) {
        return static_cast<GLRenderContext::DataIdSet*>(data.getResourceData(context->getProviderId()));
    }

    static GLint boundArrayBuffer() {
        GLint bound = -1;
        glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &bound);
        return bound;
    }
};

// A driver without buffer objects and point sprites: Mesa hides the extensions when the
// process asks before its first GL context. Returns 0 when every check holds.
int drawWithoutBufferExtension() {
    setenv("MESA_EXTENSION_OVERRIDE", "-GL_ARB_vertex_buffer_object -GL_ARB_point_sprite", 1);
    if (!GLTest::waitForDisplay())
        return 10;
    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    core.getRenderManager().initializeRenderer(false);
    auto* window = static_cast<GLSDLRenderWindow*>(
        core.getRenderManager().createRenderWindow("plain", 16, 16, false, 0, 0, nullptr));
    if (!window)
        return 11;
    GLRenderContext* context = window->getGLRenderContext();
    if (context->usesVertexBuffers() || context->usesIndexBuffers())
        return 1;
    if (context->hasPointSprites())
        return 2;

    // One triangle that covers the whole window.
    VertexData data;
    data.setUseVertex(true);
    data.initialize(3, 3);
    float const corners[3][2] = {{-1.0f, -1.0f}, {3.0f, -1.0f}, {-1.0f, 3.0f}};
    for (auto const& corner : corners) {
        data.addVertex();
        data.setVertex(corner[0], corner[1], 0.0f);
    }
    IndexData indices;
    indices.initialize(3, 3);
    if (context->updateVertexBuffer(data, VertexDataSet::Part::Vertex, 1))
        return 3;
    if (context->updateIndexBuffer(indices, 1))
        return 4;
    if (data.getResourceDataCount() != 0 || indices.getResourceDataCount() != 0)
        return 5;

    glDisable(GL_LIGHTING);
    glColor3f(1.0f, 1.0f, 1.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(data.getNumVertex(), context->toGLType(data.getVertexType()), 0, data.getVertices());
    glDrawArrays(GL_TRIANGLES, 0, 3);
    unsigned char pixel[3] = {};
    glReadPixels(8, 8, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel);
    if (pixel[0] != 255 || pixel[1] != 255 || pixel[2] != 255)
        return 6;
    core.shutdown();
    return 0;
}

}  // namespace

TEST(GLRenderContextWithoutExtensionsTest, EveryGeometryDrawsFromClientArrays) {
    if (!std::getenv("DISPLAY"))
        GTEST_SKIP() << "the GL window needs an X display (run under xvfb-run)";
    // A process of its own, since Mesa reads the extension override once per process.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(drawWithoutBufferExtension()), testing::ExitedWithCode(0), "");
}

TEST_F(GLRenderContextTest, IndexListsGoToElementArrayBuffersByStamp) {
    IndexData indices;
    indices.setIndexType(DataType::UnsignedShort);
    indices.initialize(3, 3);
    indices.addIndex(0);
    indices.addIndex(1);
    indices.addIndex(2);
    unsigned int const before = context->getBufferLoadCount();
    EXPECT_TRUE(context->updateIndexBuffer(indices, 0));
    auto* set = static_cast<GLRenderContext::IndexIdSet*>(indices.getResourceData(context->getProviderId()));
    ASSERT_NE(nullptr, set);
    EXPECT_EQ(0, set->getTimeStamp());
    GLint bound = 0;
    glGetIntegerv(GL_ELEMENT_ARRAY_BUFFER_BINDING, &bound);
    EXPECT_EQ(GLint(set->getBufferId()), bound);
    unsigned short stored[3] = {};
    glGetBufferSubData(GL_ELEMENT_ARRAY_BUFFER, 0, sizeof stored, stored);
    EXPECT_EQ(2, stored[2]);

    EXPECT_TRUE(context->updateIndexBuffer(indices, 10));
    EXPECT_EQ(10, set->getTimeStamp());
    EXPECT_EQ(before + 1, context->getBufferLoadCount());

    indices.setModified();
    EXPECT_TRUE(context->updateIndexBuffer(indices, indices.getModifiedTimestamp() + 1));
    EXPECT_TRUE(context->updateIndexBuffer(indices, indices.getModifiedTimestamp() + 2));
    EXPECT_EQ(before + 2, context->getBufferLoadCount());
}

TEST_F(GLRenderContextTest, AGLErrorInALoadStepIsLoggedAndTheCallerFallsBackToClientArrays) {
    VertexData data;
    fill(data);
    ASSERT_TRUE(context->updateVertexBuffer(data, VertexDataSet::Part::Vertex, 1));
    // A buffer with immutable storage refuses glBufferData.
    unsigned int immutable = 0;
    glGenBuffers(1, &immutable);
    glBindBuffer(GL_ARRAY_BUFFER, immutable);
    glBufferStorage(GL_ARRAY_BUFFER, 64, nullptr, 0);
    ASSERT_EQ(GLenum(GL_NO_ERROR), glGetError());
    unsigned int const original = ids(data)->getVertexBuffer();
    ids(data)->setVertexBuffer(immutable);

    data.setModified();
    std::int64_t const stamp = data.getModifiedTimestamp() + 1;
    log.mLines.clear();
    EXPECT_FALSE(context->updateVertexBuffer(data, VertexDataSet::Part::Vertex, stamp));
    ASSERT_EQ(1u, log.mLines.size());
    EXPECT_EQ("glrendercontext: GL Error while loading buffer: invalid operation", log.mLines[0]);
    EXPECT_EQ(1, ids(data)->getVertexStamp());
    // The draw goes on from the client pointer.
    EXPECT_NE(nullptr, data.getVertices());
    EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());

    ids(data)->setVertexBuffer(original);
    glDeleteBuffers(1, &immutable);
}

TEST_F(GLRenderContextTest, DestroyedDataTakesItsGLObjectsWithIt) {
    unsigned int buffer = 0;
    unsigned int index = 0;
    unsigned int textureName = 0;
    unsigned int const buffersBefore = context->getBufferCount();
    {
        VertexData data;
        fill(data);
        IndexData indices;
        indices.initialize(3, 3);
        indices.addIndex(1);
        Texture2D texture(image(1, 1, Color::Rgb, {1, 2, 3}));
        ASSERT_TRUE(context->updateVertexBuffer(data, VertexDataSet::Part::Vertex, 1));
        ASSERT_TRUE(context->updateIndexBuffer(indices, 1));
        context->bindTexture(GL_TEXTURE_2D, texture, 1);
        buffer = ids(data)->getVertexBuffer();
        index = static_cast<GLRenderContext::IndexIdSet*>(indices.getResourceData(context->getProviderId()))
                    ->getBufferId();
        textureName =
            static_cast<GLRenderContext::TexIdSet*>(texture.getResourceData(context->getProviderId()))
                ->getTextureId();
        EXPECT_EQ(buffersBefore + 2, context->getBufferCount());
        EXPECT_EQ(1u, context->getTextureCount());
        ASSERT_TRUE(glIsBuffer(buffer));
        ASSERT_TRUE(glIsBuffer(index));
        ASSERT_TRUE(glIsTexture(textureName));
    }
    EXPECT_FALSE(glIsBuffer(buffer));
    EXPECT_FALSE(glIsBuffer(index));
    EXPECT_FALSE(glIsTexture(textureName));
    EXPECT_EQ(buffersBefore, context->getBufferCount());
    EXPECT_EQ(0u, context->getTextureCount());
}
