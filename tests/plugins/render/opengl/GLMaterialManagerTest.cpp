#include <utility>

#include "GLTestWindow.h"
#include "geometry/VertexData.h"
#include "material/Material.h"
#include "plugins/render/opengl/GLMaterialManager.h"
#include "plugins/render/opengl/GLSceneManager.h"
#include "texture/Texture2D.h"

using namespace Velun;
using Dorvan::SharedPtr;

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

TEST_F(GLMaterialManagerTest, InheritLeavesTheEnvironmentAsItWas) {
    VertexData data;
    fill(data, 1);
    SharedPtr<Material> material(new Material());
    SharedPtr<Texture2D> tex = texture(Texture::Add);
    material->setTexture(0, tex);
    materials->setupTextures(material, &data);
    tex->setTexMode(Texture::Inherit);
    materials->setupTextures(material, &data);
    EXPECT_EQ(GL_ADD, env(0, GL_TEXTURE_ENV_MODE));
}

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

TEST_F(GLMaterialManagerTest, MaterialFlagsAndColoursBecomeGLState) {
    SharedPtr<Material> plain(new Material());
    EXPECT_TRUE(materials->applyMaterial(plain));
    EXPECT_FALSE(glIsEnabled(GL_COLOR_MATERIAL));
    EXPECT_EQ(Color(0.2f, 0.2f, 0.2f, 1.0f), materialColor(GL_AMBIENT));
    EXPECT_EQ(Color(0.8f, 0.8f, 0.8f, 1.0f), materialColor(GL_DIFFUSE));
    EXPECT_EQ(Color(0.0f, 0.0f, 0.0f, 1.0f), materialColor(GL_SPECULAR));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_ALPHA_TEST));
    GLint func = 0;
    glGetIntegerv(GL_ALPHA_TEST_FUNC, &func);
    EXPECT_EQ(GL_GREATER, func);
    EXPECT_EQ(0.5f, floatOf(GL_ALPHA_TEST_REF));
    EXPECT_EQ(1.0f, floatOf(GL_CURRENT_COLOR, 0));

    SharedPtr<Material> special(new Material());
    special->setUseMaterialColor(true);
    special->setUseDefaultVertexColor(true);
    special->setDefaultVertexColor(Color(0.25f, 0.5f, 0.75f));
    special->setUseBlending(true);
    special->setBlendMode(Material::ConstantAlphaBlend);
    special->setBlendColor(Color(0.0f, 0.0f, 0.0f, 0.5f));
    special->setUseAlphaTest(false);
    special->setSpecularMaterialColor(Color(1.0f, 1.0f, 1.0f, 1.0f));
    EXPECT_TRUE(materials->applyMaterial(special));
    EXPECT_TRUE(glIsEnabled(GL_COLOR_MATERIAL));
    GLint colorMaterial = 0;
    glGetIntegerv(GL_COLOR_MATERIAL_PARAMETER, &colorMaterial);
    EXPECT_EQ(GL_AMBIENT_AND_DIFFUSE, colorMaterial);
    EXPECT_EQ(0.75f, floatOf(GL_CURRENT_COLOR, 2));
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    GLint source = 0;
    glGetIntegerv(GL_BLEND_SRC_RGB, &source);
    EXPECT_EQ(GL_CONSTANT_ALPHA, source);
    EXPECT_EQ(0.5f, floatOf(GL_BLEND_COLOR, 3));
    EXPECT_FALSE(glIsEnabled(GL_ALPHA_TEST));
    EXPECT_EQ(Color(1.0f, 1.0f, 1.0f, 1.0f), materialColor(GL_SPECULAR));

    // The next plain material takes its own colours back.
    materials->applyMaterial(plain);
    EXPECT_FALSE(glIsEnabled(GL_COLOR_MATERIAL));
    EXPECT_EQ(Color(0.0f, 0.0f, 0.0f, 1.0f), materialColor(GL_SPECULAR));
    EXPECT_EQ(GLenum(GL_NO_ERROR), glGetError());
}

TEST_F(GLMaterialManagerTest, PointSpritesReplaceCoordinatesOnTheirUnitsAndAreResetAfterwards) {
    ASSERT_TRUE(context->hasPointSprites());
    VertexData data;
    fill(data, 2);
    SharedPtr<Material> sprites(new Material());
    sprites->setUsePointSprites(true);
    sprites->setSpriteSize(24.0f);
    sprites->setTexture(0, texture(Texture::Modulate));
    sprites->setTexture(1, texture(Texture::Modulate));
    materials->applyMaterial(sprites);
    materials->setupTextures(sprites, &data);
    EXPECT_TRUE(glIsEnabled(GL_POINT_SPRITE));
    EXPECT_EQ(24.0f, floatOf(GL_POINT_SIZE));
    EXPECT_EQ(24.0f, floatOf(GL_POINT_SIZE_MAX));
    EXPECT_FLOAT_EQ(0.01f, floatOf(GL_POINT_DISTANCE_ATTENUATION, 2));
    for (unsigned int unit = 0; unit < 2; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        GLint replace = 0;
        glGetTexEnviv(GL_POINT_SPRITE, GL_COORD_REPLACE, &replace);
        EXPECT_EQ(GL_TRUE, replace) << "unit " << unit;
    }

    SharedPtr<Material> plain(new Material());
    plain->setTexture(0, texture(Texture::Modulate));
    plain->setTexture(1, texture(Texture::Modulate));
    materials->applyMaterial(plain);
    materials->setupTextures(plain, &data);
    EXPECT_FALSE(glIsEnabled(GL_POINT_SPRITE));
    EXPECT_EQ(1.0f, floatOf(GL_POINT_SIZE));
    EXPECT_EQ(0.0f, floatOf(GL_POINT_DISTANCE_ATTENUATION, 2));
    EXPECT_GT(floatOf(GL_POINT_SIZE_MAX), 24.0f);
    for (unsigned int unit = 0; unit < 2; ++unit) {
        glActiveTexture(GL_TEXTURE0 + unit);
        GLint replace = 1;
        glGetTexEnviv(GL_POINT_SPRITE, GL_COORD_REPLACE, &replace);
        EXPECT_EQ(GL_FALSE, replace) << "unit " << unit;
    }
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
