#include "particle/LinearForceModel.h"
#include "particle/ParticleEngine.h"
#include "support/GLDrawFixture.h"

namespace RenderGLTest {
namespace {

typedef Dorvan::TVector<float, 3> Vec;

// Clouds drawn as white point sprites, seen by the fixture's camera (fovY 90) in the
// plane z = -5, where x from -5 to 5 spans the picture.
class GLParticleDrawTest : public GLDrawTest {
protected:
    void SetUp() override {
        GLDrawTest::SetUp();
        mEngine.setForceModel(SharedPtr<Velun::ParticleEngine::ForceModel>(new Velun::LinearForceModel()));
        mEngine.initialize();
        mEngine.start();
        addViewport(addCamera());
        SharedPtr<Velun::Material> sprites = colorMaterial(Velun::Color(1, 1, 1));
        sprites->setUsePointSprites(true);
        sprites->setSpriteSize(8.0f);
        addObject(root(), 0, 0, 0, mEngine.getParticleData().getGeometryData(), sprites);
    }

    void add(float x, float vx, std::int64_t death) {
        mEngine.getParticleData().addParticle(Vec(x, 0, -5), death);
        mEngine.getParticleData().setVelocity(Vec(vx, 0, 0));
    }
    // The cloud's update and the picture, 20 ms on.
    void step() {
        mEngine.update(mTime + 20);
        frame();
    }
    bool lit(float x) const { return pixel(int(32 + x * 6.4f), Height / 2).g > 128; }
    // Sprites along the middle row: runs of lit pixels.
    int sprites() const {
        int runs = 0;
        for (int x = 1; x < Width; ++x)
            runs += pixel(x, Height / 2).g > 128 && pixel(x - 1, Height / 2).g <= 128;
        return runs;
    }

    Velun::ParticleEngine mEngine;
};

// A still sprite, a dying one and a moving one, whose first box lies outside the view.
TEST_F(GLParticleDrawTest, LivingParticlesAreSpritesWhereTheyAreNow) {
    ASSERT_TRUE(context().usesVertexBuffers());
    add(-4, 0, 0);
    add(0, 0, mTime + 30);
    add(-14, 300, 0);  // 6 units per frame
    step();
    EXPECT_EQ(sprites(), 2);
    EXPECT_TRUE(lit(-4) && lit(0));
    step();
    EXPECT_EQ(sprites(), 2) << "one died, one moved out of its first box into the view";
    EXPECT_FALSE(lit(0));
    EXPECT_TRUE(lit(-4) && lit(-2));
    step();
    EXPECT_FALSE(lit(-2));
    EXPECT_TRUE(lit(4)) << "the buffer follows the positions";
}

}  // namespace
}  // namespace RenderGLTest
