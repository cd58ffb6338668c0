#include <gtest/gtest.h>

#include "material/Material.h"
#include "texture/Texture2D.h"

using Dorvan::SharedPtr;
using namespace Velun;

namespace {

SharedPtr<Texture> makeTexture() { return SharedPtr<Texture>(new Texture2D()); }

}  // namespace

// Shininess stays in the range OpenGL accepts.
TEST(MaterialTest, ShininessAndTextureTableByIndex) {
    Material m;
    const float cases[][2] = {{32.0f, 32.0f}, {500.0f, 128.0f}, {-1.0f, 0.0f}};
    for (const auto& c : cases) {
        m.setShininess(c[0]);
        EXPECT_EQ(c[1], m.getShininess()) << c[0];
    }

    EXPECT_TRUE(m.getTexture(3).isNull());
    EXPECT_EQ(m.getTextureCount(), 0u) << "a lookup must not add an entry";

    SharedPtr<Texture> a = makeTexture(), b = makeTexture();
    m.setTexture(0, a);
    m.setTexture(0, b);
    EXPECT_EQ(m.getTexture(0), b);
    EXPECT_EQ(m.getTextureCount(), 1u);
    EXPECT_EQ(a.getRefCount(), 1) << "the replaced texture is released";

    // Layers for multi-texturing: logical indices need not be contiguous.
    m.setTexture(5, a);
    EXPECT_EQ(m.getTexture(5), a);

    EXPECT_TRUE(m.removeTexture(0));
    EXPECT_FALSE(m.removeTexture(0));
    EXPECT_TRUE(m.getTexture(0).isNull());
    EXPECT_EQ(m.getTextureCount(), 1u);

    // A copy shares the textures and render settings; the tables are separate.
    SharedPtr<RenderSettings> settings(new RenderSettings());
    m.setRenderSettings(settings);
    Material copy(m);
    EXPECT_EQ(copy.getTexture(5), a);
    EXPECT_EQ(copy.getRenderSettings(), settings);
    EXPECT_EQ(a.getRefCount(), 3);
    copy.setTexture(5, makeTexture());
    EXPECT_EQ(m.getTexture(5), a);
}
