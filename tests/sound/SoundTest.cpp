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

using SoundNodeTest = SceneTest::EngineTest;

void expectPlacedAt(RecordingChannel const& channel, float x) {
    ASSERT_FALSE(channel.mPositions.empty());
    const Vec3& p = channel.mPositions.back();
    EXPECT_NEAR(p[0], x, 1e-5f);
    EXPECT_NEAR(p[1], 2, 1e-5f);
    EXPECT_NEAR(p[2], 3, 1e-5f);
    EXPECT_FALSE(channel.mMoving);
}

TEST_F(SoundNodeTest, ChannelsFollowTheNodeFromTheFirstPass) {
    Velun::SceneRoot scene(1);
    Velun::TransformationNode carrier;
    Sound sound;
    carrier.setChild(sound);
    carrier.translate(1, 2, 3, false);
    scene.getRoot()->attachChild(carrier);

    SharedPtr<RecordingChannel> a(new RecordingChannel()), b(new RecordingChannel());
    EXPECT_EQ(sound.addChannel(a), 0u);
    sound.addChannel(SharedPtr<SoundChannel>());
    EXPECT_EQ(sound.addChannel(b), 2u);
    scene.getUpdateTraverser()->run(0);
    expectPlacedAt(*a, 1);
    expectPlacedAt(*b, 1);
    scene.getUpdateTraverser()->run(0);
    sound.update(false);
    expectPlacedAt(*a, 1);

    carrier.translate(4, 0, 0, false);
    scene.getUpdateTraverser()->run(0);
    expectPlacedAt(*a, 5);
    expectPlacedAt(*b, 5);
    // A channel added later is placed at once.
    SharedPtr<RecordingChannel> late(new RecordingChannel());
    sound.addChannel(late);
    expectPlacedAt(*late, 5);

    EXPECT_FALSE(sound.removeChannel(4));
    EXPECT_EQ(sound.removeChannel(0).get(), a.get());
    EXPECT_EQ(sound.getChannel(1).get(), b.get());
    EXPECT_EQ(a.getRefCount(), 1);
}

}  // namespace
