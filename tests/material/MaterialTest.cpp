#include <gtest/gtest.h>

#include "material/Material.h"
#include "texture/Texture2D.h"

using Dorvan::SharedPtr;
using Velun::Color;
using Velun::Material;
using Velun::RenderSettings;
using Velun::Texture;
using Velun::Texture2D;

namespace {

SharedPtr<Texture> makeTexture() { return SharedPtr<Texture>(new Texture2D()); }

TEST(MaterialTest, DefaultsTestAlphaAndLookLikeOpenGL) {
    Material m;
    EXPECT_TRUE(m.useAlphaTest());
    EXPECT_FLOAT_EQ(m.getAlphaTestValue(), 0.5f);
    EXPECT_FLOAT_EQ(m.getSpriteSize(), 10.0f);
    EXPECT_EQ(m.getBlendMode(), 0);
    EXPECT_FALSE(m.useBlending());
    EXPECT_FALSE(m.useDefaultVertexColor());
    EXPECT_FALSE(m.useMaterialColor());
    EXPECT_FALSE(m.usePointSprites());
    EXPECT_EQ(m.getDefaultVertexColor(), Color(0, 0, 0, 1));
    EXPECT_EQ(m.getAmbientMaterialColor(), Color(0.2f, 0.2f, 0.2f, 1));
    EXPECT_EQ(m.getDiffuseMaterialColor(), Color(0.8f, 0.8f, 0.8f, 1));
    EXPECT_EQ(m.getSpecularMaterialColor(), Color(0, 0, 0, 1));
    EXPECT_EQ(m.getBlendColor(), Color(0, 0, 0, 1));
    EXPECT_EQ(m.getShininess(), 0.0f);
    EXPECT_TRUE(m.getRenderSettings().isNull());
    EXPECT_EQ(m.getTextureCount(), 0u);
}

TEST(MaterialTest, SettersStoreWhatTheyAreGiven) {
    Material m;
    m.setUseBlending(true);
    m.setBlendMode(Material::ConstantAlphaBlend);
    m.setBlendColor(Color(0.1f, 0.2f, 0.3f, 0.4f));
    m.setDiffuseMaterialColor(Color(1, 0, 0, 0.5f));
    m.setUseAlphaTest(false);
    m.setAlphaTestValue(0.1f);
    m.setUsePointSprites(true);
    m.setSpriteSize(4.0f);
    EXPECT_TRUE(m.useBlending());
    EXPECT_EQ(m.getBlendMode(), 2);
    EXPECT_EQ(m.getBlendColor(), Color(0.1f, 0.2f, 0.3f, 0.4f));
    EXPECT_EQ(m.getDiffuseMaterialColor(), Color(1, 0, 0, 0.5f));
    EXPECT_FALSE(m.useAlphaTest());
    EXPECT_FLOAT_EQ(m.getAlphaTestValue(), 0.1f);
    EXPECT_TRUE(m.usePointSprites());
    EXPECT_FLOAT_EQ(m.getSpriteSize(), 4.0f);
}

TEST(MaterialTest, ShininessStaysInTheRangeOpenGLAccepts) {
    Material m;
    m.setShininess(32.0f);
    EXPECT_EQ(m.getShininess(), 32.0f);
    m.setShininess(500.0f);
    EXPECT_EQ(m.getShininess(), 128.0f);
    m.setShininess(-1.0f);
    EXPECT_EQ(m.getShininess(), 0.0f);
}

TEST(MaterialTest, TextureTableByIndex) {
    Material m;
    EXPECT_TRUE(m.getTexture(3).isNull());
    EXPECT_EQ(m.getTextureCount(), 0u) << "a lookup must not add an entry";

    SharedPtr<Texture> a = makeTexture();
    SharedPtr<Texture> b = makeTexture();
    m.setTexture(0, a);
    m.setTexture(0, b);
    EXPECT_EQ(m.getTexture(0), b);
    EXPECT_EQ(m.getTextureCount(), 1u);
    EXPECT_EQ(a.getRefCount(), 1) << "the replaced texture is released";

    // Layers for multi-texturing: logical indices need not be contiguous.
    m.setTexture(5, a);
    EXPECT_EQ(m.getTexture(5), a);
    EXPECT_EQ(m.getTextures().begin()->first, 0u);

    EXPECT_TRUE(m.removeTexture(0));
    EXPECT_FALSE(m.removeTexture(0));
    EXPECT_TRUE(m.getTexture(0).isNull());
    EXPECT_EQ(m.getTextureCount(), 1u);
}

TEST(MaterialTest, CopySharesTexturesAndRenderSettings) {
    Material m;
    SharedPtr<Texture> t = makeTexture();
    SharedPtr<RenderSettings> settings(new RenderSettings());
    m.setTexture(1, t);
    m.setRenderSettings(settings);

    Material copy(m);
    EXPECT_EQ(copy.getTexture(1), t);
    EXPECT_EQ(copy.getRenderSettings(), settings);
    EXPECT_EQ(t.getRefCount(), 3);

    // The tables are separate: changing one leaves the other.
    copy.setTexture(1, makeTexture());
    EXPECT_EQ(m.getTexture(1), t);
}

}  // namespace
