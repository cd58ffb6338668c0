#include "particle/LinearForceModel.h"
#include "particle/ParticleEngine.h"
#include "support/GLDrawFixture.h"

namespace RenderGLTest {
namespace {

using GLParticleDrawTest = GLDrawTest;

// A cloud drawn as white point sprites, seen by the fixture's camera (fovY 90) in the plane
// z = -5, where x from -5 to 5 spans the picture: a still sprite, a dying one and a moving
// one, whose first box lies outside the view.
TEST_F(GLParticleDrawTest, LivingParticlesAreSpritesWhereTheyAreNow) {
    ASSERT_TRUE(context().usesVertexBuffers());
    Velun::ParticleEngine cloud;
    cloud.setForceModel(SharedPtr<Velun::ParticleEngine::ForceModel>(new Velun::LinearForceModel()));
    cloud.initialize();
    cloud.start();
    addViewport(addCamera());
    SharedPtr<Velun::Material> sprites = colorMaterial(Velun::Color(1, 1, 1));
    sprites->setUsePointSprites(true);
    sprites->setSpriteSize(8.0f);
    addObject(root(), 0, 0, 0, cloud.getParticleData().getGeometryData(), sprites);
    struct {
        float x, vx;  // 300: 6 units a frame
        std::int64_t death;
    } const particles[] = {{-4, 0, 0}, {0, 0, mTime + 30}, {-14, 300, 0}};
    for (auto const& p : particles) {
        cloud.getParticleData().addParticle(Dorvan::TVector<float, 3>(p.x, 0, -5), p.death);
        cloud.getParticleData().setVelocity(Dorvan::TVector<float, 3>(p.vx, 0, 0));
    }
    auto step = [&] {  // the cloud's update and the picture, 20 ms on
        cloud.update(mTime + 20);
        frame();
    };
    auto lit = [&](float x) { return pixel(int(32 + x * 6.4f), Height / 2).g > 128; };
    step();
    EXPECT_TRUE(lit(-4) && lit(0));
    step();
    EXPECT_FALSE(lit(0)) << "died";
    EXPECT_TRUE(lit(-4) && lit(-2)) << "moved out of its first box into the view";
    step();
    EXPECT_FALSE(lit(-2));
    EXPECT_TRUE(lit(4)) << "the buffer follows the positions";
    mNodes.clear();  // the cloud's object goes before the cloud
}

}  // namespace
}  // namespace RenderGLTest
