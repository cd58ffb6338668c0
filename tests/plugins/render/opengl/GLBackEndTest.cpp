#include <cstdlib>
#include <memory>

#include "support/GLDrawFixture.h"

using namespace Velun;
using namespace RenderGLTest;
using Part = VertexDataSet::Part;

namespace {

// The GL back end's parts driven one by one in the shared window.
class GLBackEndTest : public GLDrawTest {
protected:
    // A quad's vertices with `layers` layers of texture coordinates naming material indices
    // 0, 1, ...; they live until the next call or the end of the test.
    VertexData& vertices(unsigned int layers = 1) {
        mQuad = makeQuad(QuadShape{-1, -1, 1, 1, layers});
        return *static_cast<VertexData*>(mQuad->getIndexedDataSet(0));
    }
    template <class Ids, class Set>
    Ids* ids(Set& set) {
        return static_cast<Ids*>(set.getResourceData(context().getProviderId()));
    }
    using DataIds = GLRenderContext::DataIdSet;
    using IndexIds = GLRenderContext::IndexIdSet;
    using TexIds = GLRenderContext::TexIdSet;

    // A buffer with immutable storage, which refuses glBufferData.
    static unsigned int immutableBuffer(GLenum target) {
        unsigned int name = 0;
        glGenBuffers(1, &name);
        glBindBuffer(target, name);
        glBufferStorage(target, 4, nullptr, 0);
        return name;
    }

    // Checked in a process of its own whose window opened without buffer objects and
    // point sprites; 0 when everything holds.
    int drawsFromClientArrays() {
        if (context().usesVertexBuffers() || context().usesIndexBuffers() || context().hasPointSprites())
            return 1;
        VertexData& data = vertices();
        IndexData indices;
        indices.initialize(3, 3);
        if (context().updateVertexBuffer(data, Part::Vertex, 1) || context().updateIndexBuffer(indices, 1) ||
            data.getResourceDataCount() != 0 || indices.getResourceDataCount() != 0)
            return 2;
        addViewport(addCamera());
        addQuad(root(), 0, 0, -5, QuadShape(), colorMaterial(Color(1, 0, 0)));
        frame();
        return near(centre(), {255, 0, 0}, 0) ? 0 : 3;
    }

    SharedPtr<Geometry> mQuad;
};

}  // namespace

TEST_F(GLBackEndTest, WithoutBufferExtensionsEveryGeometryDrawsFromClientArrays) {
    // Mesa reads the override once per process, at its first context: the death test's
    // process inherits it and opens its window after.
    setenv("MESA_EXTENSION_OVERRIDE", "-GL_ARB_vertex_buffer_object -GL_ARB_point_sprite", 1);
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(drawsFromClientArrays()), testing::ExitedWithCode(0), "");
    unsetenv("MESA_EXTENSION_OVERRIDE");
}

TEST_F(GLBackEndTest, IndexBuffersLoadByStampAndAreRefilledWhenLostAFailedLoadIsLoggedAndDropped) {
    IndexData indices;
    indices.setIndexType(DataType::UnsignedShort);
    indices.initialize(3, 3);
    for (unsigned int i : {4u, 5u, 6u})
        indices.addIndex(i);
    unsigned int const before = context().getBufferLoadCount();
    EXPECT_TRUE(context().updateIndexBuffer(indices, 0));
    IndexIds* set = ids<IndexIds>(indices);
    ASSERT_NE(nullptr, set);
    EXPECT_TRUE(context().updateIndexBuffer(indices, 10));
    EXPECT_EQ(before + 1, context().getBufferLoadCount());
    indices.setModified();
    EXPECT_TRUE(context().updateIndexBuffer(indices, indices.getModifiedTimestamp() + 1));
    EXPECT_TRUE(context().updateIndexBuffer(indices, indices.getModifiedTimestamp() + 2));
    EXPECT_EQ(before + 2, context().getBufferLoadCount());

    // A name the driver lost is filled again under the same name.
    unsigned int const name = set->getBufferId();
    glDeleteBuffers(1, &name);
    EXPECT_TRUE(context().updateIndexBuffer(indices, indices.getModifiedTimestamp() + 3));
    EXPECT_EQ(name, set->getBufferId());
    unsigned short stored[3] = {};
    glGetBufferSubData(GL_ELEMENT_ARRAY_BUFFER, 0, sizeof stored, stored);
    EXPECT_EQ(6, stored[2]);

    unsigned int const immutable = immutableBuffer(GL_ELEMENT_ARRAY_BUFFER);
    set->setBufferId(immutable);
    sClock->setTime(mTime += 10);
    indices.setModified();
    EXPECT_FALSE(context().updateIndexBuffer(indices, indices.getModifiedTimestamp() + 1));
    EXPECT_FALSE(glIsBuffer(immutable));
    EXPECT_TRUE(context().updateIndexBuffer(indices, indices.getModifiedTimestamp() + 2));
    glDeleteBuffers(1, &name);

    // A failed vertex load keeps the set's stamp: the caller falls back to client arrays.
    VertexData& data = vertices();
    ASSERT_TRUE(context().updateVertexBuffer(data, Part::Vertex, 1));
    unsigned int const locked = immutableBuffer(GL_ARRAY_BUFFER);
    ASSERT_EQ(GLenum(GL_NO_ERROR), glGetError());
    unsigned int const original = ids<DataIds>(data)->getBuffer(Part::Vertex);
    ids<DataIds>(data)->setBuffer(Part::Vertex, locked);
    data.setModified();
    EXPECT_FALSE(context().updateVertexBuffer(data, Part::Vertex, data.getModifiedTimestamp() + 1));
    EXPECT_EQ(
        (std::vector<std::string>{"glrendercontext: GL Error while loading index buffer: invalid operation",
                                  "glrendercontext: GL Error while loading buffer: invalid operation"}),
        logLines());
    EXPECT_EQ(1, ids<DataIds>(data)->getStamp(Part::Vertex));
    EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
    ids<DataIds>(data)->setBuffer(Part::Vertex, original);
    glDeleteBuffers(1, &locked);
}

TEST_F(GLBackEndTest, GLObjectsGoWithTheirDataOrWithTheWindowAndANewWindowLoadsAgain) {
    unsigned int buffer = 0, index = 0, textureName = 0;
    unsigned int const buffers = context().getBufferCount(), textures = context().getTextureCount();
    {
        VertexData& data = vertices();
        IndexData indices;
        indices.initialize(3, 3);
        indices.addIndex(1);
        Texture2D texture(makeImage(1, 1, {1, 2, 3}));
        ASSERT_TRUE(context().updateVertexBuffer(data, Part::Vertex, 1));
        ASSERT_TRUE(context().updateIndexBuffer(indices, 1));
        context().bindTexture(GL_TEXTURE_2D, texture, 1);
        buffer = ids<DataIds>(data)->getBuffer(Part::Vertex);
        index = ids<IndexIds>(indices)->getBufferId();
        textureName = ids<TexIds>(texture)->getTextureId();
        ASSERT_TRUE(glIsBuffer(buffer) && glIsBuffer(index) && glIsTexture(textureName));
        EXPECT_EQ(buffers + 2, context().getBufferCount());
        EXPECT_EQ(textures + 1, context().getTextureCount());
        mQuad = SharedPtr<Geometry>();
    }
    EXPECT_FALSE(glIsBuffer(buffer) || glIsBuffer(index) || glIsTexture(textureName));
    EXPECT_TRUE(context().getBufferCount() == buffers && context().getTextureCount() == textures);

    // What the window's context still holds goes with it.
    VertexData& data = vertices();
    ASSERT_TRUE(context().updateVertexBuffer(data, Part::Vertex, 1));
    buffer = ids<DataIds>(data)->getBuffer(Part::Vertex);
    unsigned int const provider = context().getProviderId();
    delete sWindow;
    // SDL's surface and its GL context outlive the window object.
    EXPECT_FALSE(glIsBuffer(buffer));
    EXPECT_EQ(nullptr, data.getResourceData(provider));

    sWindow = static_cast<GLSDLRenderWindow*>(
        sEngine->createRenderWindow(2, "again", Width, Height, false, 0, 0, nullptr));
    ASSERT_NE(nullptr, sWindow);
    EXPECT_NE(provider, context().getProviderId());
    EXPECT_TRUE(context().updateVertexBuffer(data, Part::Vertex, 1));
    EXPECT_EQ(1u, context().getBufferLoadCount());
}

TEST_F(GLBackEndTest, TexturesLoadByStampRefillALostNameGetMipmapsAndLogACrossbarModeNamingNoUnit) {
    GLSceneManager scene(&context(), SharedPtr<RenderSettings>());
    GLMaterialManager materials(&context());
    materials.setSceneManager(&scene);
    VertexData& data = vertices();
    SharedPtr<Texture2D> tex(new Texture2D(makeImage(1, 1, {10, 20, 30})));
    SharedPtr<Material> material(new Material());
    material->setTexture(0, tex);
    unsigned int const before = context().getTextureLoadCount();
    unsigned char pixel[3] = {};
    auto setupTwice = [&](unsigned int loads) {
        sClock->setTime(mTime += 10);  // so that a later stamp differs
        materials.setupTextures(material, &data);
        materials.setupTextures(material, &data);
        EXPECT_EQ(before + loads, context().getTextureLoadCount());
        glActiveTexture(GL_TEXTURE0);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_UNSIGNED_BYTE, pixel);
    };
    setupTwice(1);
    tex->setTextureSource(makeImage(1, 1, {200, 100, 50}));
    setupTwice(2);
    EXPECT_EQ(200, pixel[0]);
    unsigned int const name = ids<TexIds>(*tex)->getTextureId();
    glDeleteTextures(1, &name);
    setupTwice(3);
    EXPECT_EQ(name, ids<TexIds>(*tex)->getTextureId());
    EXPECT_EQ(100, pixel[1]);

    // Mipmaps of one image are generated, for a mipmap filter or when asked for.
    std::vector<unsigned char> const white(4 * 4 * 4, 255);
    for (bool filter : {true, false}) {
        SharedPtr<Texture2D> mipmapped(new Texture2D(makeImage(4, 4, white, Color::Rgba)));
        mipmapped->setMinFilter(filter ? Texture::MipMap : Texture::Linear);
        mipmapped->setGenerateMipMaps(!filter);
        material->setTexture(0, mipmapped);
        materials.setupTextures(material, &data);
        GLint width = 0;               // of the last level, 1 x 1
        glActiveTexture(GL_TEXTURE0);  // the unit the last test left active may be another
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 2, GL_TEXTURE_WIDTH, &width);
        EXPECT_EQ(1, width);
    }
    EXPECT_TRUE(logLines().empty());

    // On the last unit, "the next unit" of a crossbar mode is past the driver's units.
    unsigned int const units = context().getMaxTextureUnits();
    VertexData& layers = vertices(units);
    for (unsigned int i = 0; i + 1 < units; ++i)
        material->setTexture(i, makeTexture(1, 1, {10, 20, 30}));
    material->setTexture(units - 1, makeTexture(1, 1, {10, 20, 30}, Texture::InterpolateByNextAlpha));
    materials.setupTextures(material, &layers);
    EXPECT_EQ(
        std::vector<std::string>{
            "glmaterialmanager: GL Error while updating Texture mode [10]: invalid enumerant"},
        logLines());
    glActiveTexture(GL_TEXTURE0 + units - 1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D)) << "the texture stays bound";
}

// What each kind of light shows is in render_gl's lighting test; here what happens to the
// GL lights a pass leaves over or runs out of.
TEST_F(GLBackEndTest, LightsBeyondThePassGoOffAndANinthReplacesTheFirst) {
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();  // as the view renderer does before lights and drawables
    for (int i = 0; i < 8; ++i)
        glEnable(GL_LIGHT0 + i);
    std::vector<std::unique_ptr<Light>> lights;
    auto setup = [&](int count) {
        GLSceneManager scene(&context(), SharedPtr<RenderSettings>());
        for (int i = 0; i < count; ++i) {
            lights.emplace_back(new Light());
            lights.back()->setDiffuseColor(Color(0.1f * (i + 1), 0.0f, 0.0f, 1.0f));
            scene.addLight(lights.back().get());
        }
        scene.setupLights();
    };
    setup(3);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(i < 3, glIsEnabled(GL_LIGHT0 + i)) << "light " << i;
    setup(9);
    GLfloat first[4] = {}, second[4] = {};  // diffuse colours, red the light's number / 10
    glGetLightfv(GL_LIGHT0, GL_DIFFUSE, first);
    glGetLightfv(GL_LIGHT1, GL_DIFFUSE, second);
    EXPECT_FLOAT_EQ(0.9f, first[0]);
    EXPECT_FLOAT_EQ(0.2f, second[0]);
    for (int i = 0; i < 8; ++i)
        EXPECT_TRUE(glIsEnabled(GL_LIGHT0 + i));
    glPopMatrix();
}
