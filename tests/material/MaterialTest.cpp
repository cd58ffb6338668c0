#include <gtest/gtest.h>

#include "material/Material.h"
#include "texture/Texture2D.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace {

SharedPtr<Texture> makeTexture() { return SharedPtr<Texture>(new Texture2D()); }

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
