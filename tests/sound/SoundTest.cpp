#include <memory>

#include "RecordingSoundEngine.h"
#include "scene/SceneFixture.h"
#include "scene/SceneRoot.h"
#include "scene/UpdateTraverser.h"
#include "sound/Sound.h"

using Dorvan::SharedPtr;
using SoundTest::RecordingChannel;
using SoundTest::Vec3;
using Velun::Sound;
using Velun::SoundChannel;

namespace {

class SoundNodeTest : public SceneTest::EngineTest {
protected:
    void SetUp() override {
        SceneTest::EngineTest::SetUp();
        scene.reset(new Velun::SceneRoot(1));
    }
    void TearDown() override {
        scene.reset();
        SceneTest::EngineTest::TearDown();
    }
    void update() { scene->getUpdateTraverser()->run(0); }
    std::unique_ptr<Velun::SceneRoot> scene;
};

void expectPlacedAt(RecordingChannel const& channel, float x, float y, float z) {
    ASSERT_FALSE(channel.mPositions.empty());
    const Vec3& p = channel.mPositions.back();
    EXPECT_NEAR(p[0], x, 1e-5f);
    EXPECT_NEAR(p[1], y, 1e-5f);
    EXPECT_NEAR(p[2], z, 1e-5f);
    const Vec3& v = channel.mVelocities.back();
    EXPECT_TRUE(v[0] == 0.0f && v[1] == 0.0f && v[2] == 0.0f);
}

TEST_F(SoundNodeTest, ChannelsFollowTheNodeFromTheFirstPass) {
    Velun::TransformationNode carrier;
    Sound sound;
    carrier.setChild(sound);
    carrier.translate(1, 2, 3, false);
    scene->getRoot()->attachChild(carrier);

    SharedPtr<RecordingChannel> a(new RecordingChannel()), b(new RecordingChannel());
    EXPECT_EQ(sound.addChannel(a), 0u);
    sound.addChannel(SharedPtr<SoundChannel>());
    EXPECT_EQ(sound.addChannel(b), 2u);
    update();
    expectPlacedAt(*a, 1, 2, 3);
    expectPlacedAt(*b, 1, 2, 3);

    update();
    sound.update(false);
    expectPlacedAt(*a, 1, 2, 3);

    carrier.translate(4, 0, 0, false);
    update();
    expectPlacedAt(*a, 5, 2, 3);
    expectPlacedAt(*b, 5, 2, 3);

    // A channel added later is placed at once.
    SharedPtr<RecordingChannel> late(new RecordingChannel());
    sound.addChannel(late);
    expectPlacedAt(*late, 5, 2, 3);
}

TEST_F(SoundNodeTest, ChannelsByIndex) {
    Sound sound;
    SharedPtr<RecordingChannel> a(new RecordingChannel()), b(new RecordingChannel());
    sound.addChannel(a);
    sound.addChannel(b);
    EXPECT_FALSE(sound.getChannel(2));
    EXPECT_FALSE(sound.removeChannel(2));
    EXPECT_EQ(sound.removeChannel(0).get(), a.get());
    EXPECT_EQ(sound.getChannelCount(), 1u);
    EXPECT_EQ(sound.getChannel(0).get(), b.get());
    EXPECT_EQ(a.getRefCount(), 1);
}

}  // namespace
