
#include <cstdlib>
#include <memory>
#include <utility>

#include "GLTestWindow.h"
#include "core/ProcessManager.h"
#include "geometry/IndexData.h"
#include "geometry/VertexData.h"
#include "material/Material.h"
#include "plugins/render/opengl/GLMaterialManager.h"
#include "plugins/render/opengl/GLRenderEngine.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "scene/Light.h"
#include "texture/Texture2D.h"

using namespace Velun;
using Dorvan::Matrix;
using Dorvan::SharedPtr;

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
    unsigned int const original = ids(data)->getBuffer(VertexDataSet::Part::Vertex);
    ids(data)->setBuffer(VertexDataSet::Part::Vertex, immutable);

    data.setModified();
    std::int64_t const stamp = data.getModifiedTimestamp() + 1;
    log.mLines.clear();
    EXPECT_FALSE(context->updateVertexBuffer(data, VertexDataSet::Part::Vertex, stamp));
    ASSERT_EQ(1u, log.mLines.size());
    EXPECT_EQ("glrendercontext: GL Error while loading buffer: invalid operation", log.mLines[0]);
    EXPECT_EQ(1, ids(data)->getStamp(VertexDataSet::Part::Vertex));
    // The draw goes on from the client pointer.
    EXPECT_NE(nullptr, data.getVertices());
    EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());

    ids(data)->setBuffer(VertexDataSet::Part::Vertex, original);
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
        buffer = ids(data)->getBuffer(VertexDataSet::Part::Vertex);
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

namespace {

class GLMaterialManagerTest : public GLTest::WindowTest {
protected:
    void SetUp() override {
        GLTest::WindowTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        scene = new GLSceneManager(context, SharedPtr<RenderSettings>());
        materials = new GLMaterialManager(context);
        materials->setSceneManager(scene);
    }
    void TearDown() override {
        delete materials;
        delete scene;
        GLTest::WindowTest::TearDown();
    }

    // One vertex with `layers` texture coordinate layers naming material indices 0, 1, ...
    static void fill(VertexData& data, unsigned int layers) {
        data.setUseVertex(true);
        data.setUseTexCoordinates(layers > 0);
        for (unsigned int i = 0; i < layers; ++i)
            data.addTextureIndex(i);
        data.initialize(1, 1);
        data.addVertex();
        data.setVertex(0.0f, 0.0f, 0.0f);
    }

    static SharedPtr<Texture2D> texture(Texture::TexMode mode) {
        SharedPtr<Texture2D> result(new Texture2D(image(1, 1, Color::Rgb, {10, 20, 30})));
        result->setTexMode(mode);
        return result;
    }

    static GLint env(unsigned int unit, GLenum name) {
        glActiveTexture(GL_TEXTURE0 + unit);
        GLint value = -1;
        glGetTexEnviv(GL_TEXTURE_ENV, name, &value);
        return value;
    }

    static bool enabledOn(unsigned int unit, GLenum capability) {
        glActiveTexture(GL_TEXTURE0 + unit);
        glClientActiveTexture(GL_TEXTURE0 + unit);
        return glIsEnabled(capability) == GL_TRUE;
    }

    static GLfloat floatOf(GLenum name, int component = 0) {
        GLfloat values[16] = {};
        glGetFloatv(name, values);
        return values[component];
    }

    static Color materialColor(GLenum name) {
        GLfloat values[4] = {};
        glGetMaterialfv(GL_FRONT, name, values);
        return Color(values[0], values[1], values[2], values[3]);
    }

    GLSceneManager* scene = nullptr;
    GLMaterialManager* materials = nullptr;
};

struct Row {
    Texture::TexMode mode;
    std::vector<std::pair<GLenum, GLint>> state;
};

}  // namespace

TEST_F(GLMaterialManagerTest, ACrossbarModeNamingNoUnitLogsTheModeAndTheGLError) {
    // On the last unit, "the next unit" is past the driver's units.
    unsigned int const units = context->getMaxTextureUnits();
    VertexData data;
    fill(data, units);
    SharedPtr<Material> material(new Material());
    for (unsigned int i = 0; i + 1 < units; ++i)
        material->setTexture(i, texture(Texture::Modulate));
    material->setTexture(units - 1, texture(Texture::InterpolateByNextAlpha));
    log.mLines.clear();
    materials->setupTextures(material, &data);
    ASSERT_EQ(1u, log.mLines.size());
    EXPECT_EQ("glmaterialmanager: GL Error while updating Texture mode [10]: invalid enumerant",
              log.mLines[0]);
    EXPECT_TRUE(enabledOn(units - 1, GL_TEXTURE_2D)) << "the texture stays bound";
}

TEST_F(GLMaterialManagerTest, TexturesAreUploadedByStamp) {
    VertexData data;
    fill(data, 1);
    SharedPtr<Texture2D> tex = texture(Texture::Modulate);
    SharedPtr<Material> material(new Material());
    material->setTexture(0, tex);
    unsigned int const before = context->getTextureLoadCount();
    materials->setupTextures(material, &data);
    EXPECT_EQ(before + 1, context->getTextureLoadCount());
    nextMillisecond();
    materials->setupTextures(material, &data);
    materials->setupTextures(material, &data);
    EXPECT_EQ(before + 1, context->getTextureLoadCount());

    tex->setTextureSource(image(1, 1, Color::Rgb, {200, 100, 50}));
    nextMillisecond();
    materials->setupTextures(material, &data);
    materials->setupTextures(material, &data);
    EXPECT_EQ(before + 2, context->getTextureLoadCount());
    unsigned char pixel[3] = {};
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, pixel);
    EXPECT_EQ(200, pixel[0]);

    // A name the driver lost is filled again under the same name.
    auto* set = static_cast<GLRenderContext::TexIdSet*>(tex->getResourceData(context->getProviderId()));
    unsigned int const name = set->getTextureId();
    glDeleteTextures(1, &name);
    materials->setupTextures(material, &data);
    EXPECT_EQ(before + 3, context->getTextureLoadCount());
    EXPECT_EQ(name, set->getTextureId());
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, pixel);
    EXPECT_EQ(100, pixel[1]);
}

TEST_F(GLMaterialManagerTest, ReversedChannelOrdersAndOddRowsUploadAsTheyAre) {
    VertexData data;
    fill(data, 1);
    // Three pixels per row: 9 bytes, no row padding.
    std::vector<unsigned char> bgr = {3, 2, 1, 6, 5, 4, 9, 8, 7, 30, 20, 10, 60, 50, 40, 90, 80, 70};
    SharedPtr<Texture2D> tex(new Texture2D(image(3, 2, Color::Bgr, bgr)));
    SharedPtr<Material> material(new Material());
    material->setTexture(0, tex);
    materials->setupTextures(material, &data);
    EXPECT_TRUE(log.mLines.empty());
    GLint internal = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &internal);
    EXPECT_EQ(GL_RGB, internal);
    std::vector<unsigned char> rgb(18, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, rgb.data());
    std::vector<unsigned char> const expected = {1,  2,  3,  4,  5,  6,  7,  8,  9,
                                                 10, 20, 30, 40, 50, 60, 70, 80, 90};
    EXPECT_EQ(expected, rgb);
}

TEST_F(GLMaterialManagerTest, MipmapsOfOneImageAreGenerated) {
    VertexData data;
    fill(data, 1);
    std::vector<unsigned char> pixels(4 * 4 * 4, 255);
    SharedPtr<Texture2D> tex(new Texture2D(image(4, 4, Color::Rgba, pixels)));
    tex->setMinFilter(Texture::MipMap);
    SharedPtr<Material> material(new Material());
    material->setTexture(0, tex);
    materials->setupTextures(material, &data);
    GLint width = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(2, width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 2, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(1, width);

    // Generation asked for with a plain filter still builds the levels.
    SharedPtr<Texture2D> generated(new Texture2D(image(4, 4, Color::Rgba, pixels)));
    generated->setGenerateMipMaps(true);
    material->setTexture(0, generated);
    materials->setupTextures(material, &data);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH, &width);
    EXPECT_EQ(2, width);
    EXPECT_TRUE(log.mLines.empty());
}

namespace {

class GLSceneManagerTest : public GLTest::WindowTest {
protected:
    void SetUp() override {
        GLTest::WindowTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        // The view renderer pushes the view matrix once before lights and drawables.
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glPushMatrix();
    }

    static Matrix<float, 4> translation(float x, float y, float z) {
        Matrix<float, 4> m = Matrix<float, 4>::identity();
        m(0, 3) = x;
        m(1, 3) = y;
        m(2, 3) = z;
        return m;
    }

    Light* light(float red, float x = 0.0f) {
        lights.emplace_back(new Light());
        Light* result = lights.back().get();
        result->setDiffuseColor(Color(red, 0.0f, 0.0f, 1.0f));
        result->getTransformedNode().assignWorldTransformation(translation(x, 0.0f, 0.0f));
        return result;
    }

    static GLfloat lightValue(GLenum id, GLenum name, int component = 0) {
        GLfloat values[4] = {};
        glGetLightfv(id, name, values);
        return values[component];
    }

    static GLint integer(GLenum name) {
        GLint value = 0;
        glGetIntegerv(name, &value);
        return value;
    }

    std::vector<std::unique_ptr<Light>> lights;
};

}  // namespace

TEST_F(GLSceneManagerTest, LightsOfThePassBecomeGLLightsAndTheRestGoOff) {
    for (int i = 0; i < 8; ++i)
        glEnable(GL_LIGHT0 + i);
    GLSceneManager scene(context, SharedPtr<RenderSettings>());
    Light* point = light(0.5f, 3.0f);
    point->setLinearAttenuation(0.25f);
    Light* spot = light(0.25f);
    spot->setLightType(Light::Spot);
    spot->setSpotCutoff(30.0f);
    spot->setSpotExponent(2.0f);
    Light* off = light(1.0f);
    off->setEnabled(false);
    Light* directional = light(0.75f);
    directional->setLightType(Light::Directional);
    scene.addLight(point);
    scene.addLight(spot);
    scene.addLight(off);
    scene.addLight(directional);
    EXPECT_EQ(4u, scene.getLightCount());
    scene.setupLights();

    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_TRUE(glIsEnabled(GL_LIGHT0));
    EXPECT_EQ(0.5f, lightValue(GL_LIGHT0, GL_DIFFUSE));
    EXPECT_EQ(0.25f, lightValue(GL_LIGHT0, GL_LINEAR_ATTENUATION));
    EXPECT_EQ(180.0f, lightValue(GL_LIGHT0, GL_SPOT_CUTOFF));
    // The position is given in the light's space, so it lands at its place in eye space.
    EXPECT_EQ(3.0f, lightValue(GL_LIGHT0, GL_POSITION, 0));
    EXPECT_EQ(1.0f, lightValue(GL_LIGHT0, GL_POSITION, 3));

    EXPECT_EQ(30.0f, lightValue(GL_LIGHT1, GL_SPOT_CUTOFF));
    EXPECT_EQ(2.0f, lightValue(GL_LIGHT1, GL_SPOT_EXPONENT));
    EXPECT_EQ(-1.0f, lightValue(GL_LIGHT1, GL_SPOT_DIRECTION, 2));

    EXPECT_FALSE(glIsEnabled(GL_LIGHT2));
    EXPECT_NE(1.0f, lightValue(GL_LIGHT2, GL_DIFFUSE)) << "a disabled light sends nothing";

    EXPECT_EQ(0.0f, lightValue(GL_LIGHT3, GL_POSITION, 3));
    EXPECT_EQ(1.0f, lightValue(GL_LIGHT3, GL_POSITION, 2));
    for (int i = 4; i < 8; ++i)
        EXPECT_FALSE(glIsEnabled(GL_LIGHT0 + i)) << "light " << i;
}

TEST_F(GLSceneManagerTest, ANinthLightReplacesTheFirst) {
    GLSceneManager scene(context, SharedPtr<RenderSettings>());
    for (int i = 0; i < 9; ++i)
        scene.addLight(light(0.1f * (i + 1)));
    scene.setupLights();
    EXPECT_FLOAT_EQ(0.9f, lightValue(GL_LIGHT0, GL_DIFFUSE));
    EXPECT_FLOAT_EQ(0.2f, lightValue(GL_LIGHT1, GL_DIFFUSE));
    for (int i = 0; i < 8; ++i)
        EXPECT_TRUE(glIsEnabled(GL_LIGHT0 + i));
}

namespace {

class GLSDLRenderWindowTest : public GLTest::WindowTest {};

}  // namespace

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
    unsigned int const buffer = ids->getBuffer(VertexDataSet::Part::Vertex);
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

TEST_F(GLRenderContextTest, AnIndexBufferIsRefilledWhenLostAndLeftToClientMemoryOnError) {
    IndexData indices;
    indices.initialize(3, 3);
    for (unsigned int i : {4u, 5u, 6u})
        indices.addIndex(i);
    ASSERT_TRUE(context->updateIndexBuffer(indices, 1));
    auto* set = static_cast<GLRenderContext::IndexIdSet*>(indices.getResourceData(context->getProviderId()));
    unsigned int const name = set->getBufferId();
    glDeleteBuffers(1, &name);
    EXPECT_TRUE(context->updateIndexBuffer(indices, 2));
    EXPECT_EQ(name, set->getBufferId());
    unsigned int stored[3] = {};
    glGetBufferSubData(GL_ELEMENT_ARRAY_BUFFER, 0, sizeof stored, stored);
    EXPECT_EQ(6u, stored[2]);

    // A buffer with immutable storage refuses glBufferData.
    unsigned int immutable = 0;
    glGenBuffers(1, &immutable);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, immutable);
    glBufferStorage(GL_ELEMENT_ARRAY_BUFFER, 4, nullptr, 0);
    set->setBufferId(immutable);
    indices.setModified();
    log.mLines.clear();
    EXPECT_FALSE(context->updateIndexBuffer(indices, indices.getModifiedTimestamp() + 1));
    ASSERT_EQ(1u, log.mLines.size());
    EXPECT_EQ("glrendercontext: GL Error while loading index buffer: invalid operation", log.mLines[0]);
    EXPECT_FALSE(glIsBuffer(immutable));
    EXPECT_TRUE(context->updateIndexBuffer(indices, indices.getModifiedTimestamp() + 2));
    glDeleteBuffers(1, &name);
}
