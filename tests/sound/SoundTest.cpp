#include <gtest/gtest.h>

#include "core/FileNameMapper.h"
#include "scene/SceneFixture.h"
#include "scene/SceneRoot.h"
#include "scene/UpdateTraverser.h"
#include "sound/Sound.h"
#include "sound/SoundEngine.h"
#include "sound/SoundManager.h"

using Dorvan::SharedPtr;
using Velun::SoundChannel;
using Velun::SoundSource;
typedef Dorvan::TVector<float, 3> Vec3;

namespace {

class RecordingSource : public SoundSource {
public:
    int getLength() const override { return -1; }
    int getChannels() const override { return -1; }
};

// Records the places it is given and whether any velocity was; everything else succeeds.
class RecordingChannel : public SoundChannel {
public:
    bool setSoundSource(SharedPtr<SoundSource>) override { return true; }
    bool setVolume(float) override { return true; }
    bool play() override { return true; }
    bool stop() override { return true; }
    bool setPaused(bool) override { return true; }
    bool setRepeat(bool) override { return true; }
    bool setMute(bool) override { return true; }
    bool setLoopCount(int) override { return true; }
    bool set3DAttributes(const Vec3& position, const Vec3& velocity) override {
        mPositions.push_back(position);
        mMoving = mMoving || velocity.length() > 0.0f;
        return true;
    }
    bool isPlaying() const override { return false; }
    bool isMuted() const override { return false; }
    bool isPaused() const override { return false; }

    std::vector<Vec3> mPositions;
    bool mMoving = false;
};

// Records its calls, e.g. "update(40)" or "open(sound\\x.wav,1)" (1: placed in the world).
// Files whose name contains "missing" cannot be opened; initialisation fails when mFail is set.
class RecordingSoundEngine : public Velun::SoundEngine {
public:
    bool isInitialized() const override { return mInitialized; }
    bool initialize() override {
        mCalls.push_back("initialize");
        return mInitialized = !mFail;
    }
    bool shutdown() override { return !(mInitialized = false); }
    bool update(std::int64_t timestamp) override {
        mCalls.push_back("update(" + std::to_string(timestamp) + ")");
        return true;
    }
    SharedPtr<SoundSource> createSoundSource(const Velun::NameMapper::ResourceInfo& info,
                                             bool positional) const override {
        mCalls.push_back("open(" + info.getFileName() + "," + std::to_string(positional) + ")");
        return SharedPtr<SoundSource>(
            info.getFileName().find("missing") == std::string::npos ? new RecordingSource() : nullptr);
    }
    SharedPtr<SoundChannel> createChannel(SharedPtr<SoundSource>) const override {
        return SharedPtr<SoundChannel>(new RecordingChannel());
    }
    void updateListenerAttributes(const Vec3& position, const Vec3&, const Vec3&, const Vec3&,
                                  unsigned int) override {
        mCalls.push_back("listener(" + std::to_string(int(position[0])) + ")");
    }

    bool mInitialized = false, mFail = false;
    mutable std::vector<std::string> mCalls;
};

class SoundManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        manager.setSoundNameMapper(SharedPtr<Velun::NameMapper>(new Velun::FileNameMapper("sound")));
        ASSERT_TRUE(manager.registerSoundEngine(engine));
    }
    void listenAt(float x) {
        manager.updateListenerAttributes(Vec3(x, 2, 3), Vec3(0, 0, 0), Vec3(0, 0, -1), Vec3(0, 1, 0), 0);
    }

    RecordingSoundEngine engine;
    Velun::SoundManager manager;
};

TEST_F(SoundManagerTest, SourcesAreCachedByKindWhenAskedChannelsByNameAndAnUnregisteredEngineLeavesNothing) {
    listenAt(1);
    ASSERT_TRUE(manager.registerSoundEngine(engine));  // again: one engine, one process
    for (Velun::Process* process : *manager.getProcessList())
        process->run(40);
    RecordingSoundEngine broken;
    broken.mFail = true;
    EXPECT_FALSE(manager.registerSoundEngine(broken));
    EXPECT_EQ(manager.getSoundEngine(), &engine);
    EXPECT_EQ(manager.getProcessList()->size(), 1u);

    SharedPtr<SoundSource> cached = manager.getSoundSource("x.wav", true, true);
    EXPECT_TRUE(manager.getSoundSource("x.wav", true, true) == cached);
    EXPECT_FALSE(manager.getSoundSource("x.wav", false, true) == cached);
    SharedPtr<SoundSource> uncached = manager.getSoundSource("y.wav", true, false);
    EXPECT_EQ(uncached.getRefCount(), 1);  // the cache does not keep it
    EXPECT_FALSE(manager.getSoundSource("y.wav", true, false) == uncached);
    EXPECT_FALSE(manager.getSoundSource("missing.wav", true, true));
    EXPECT_FALSE(manager.getSoundSource("missing.wav", true, true));

    // Channels are kept only when named, and a new one of the same name replaces the old.
    EXPECT_EQ(manager.createChannel(cached).getRefCount(), 1);
    EXPECT_FALSE(manager.getChannel(""));
    SharedPtr<SoundChannel> first = manager.createChannel(cached, "music");
    SharedPtr<SoundChannel> second = manager.createChannel(cached, "music");
    EXPECT_EQ(manager.getChannel("music"), second);
    EXPECT_EQ(first.getRefCount(), 1);

    manager.unregisterSoundEngine(engine);
    EXPECT_TRUE(manager.getProcessList()->empty());
    EXPECT_EQ(cached.getRefCount(), 1);
    EXPECT_EQ(second.getRefCount(), 1);
    // Without an engine the game runs on silently.
    EXPECT_FALSE(manager.getSoundSource("x.wav", true, true));
    EXPECT_FALSE(manager.createChannel(cached));
    listenAt(5);
    EXPECT_EQ(engine.mCalls, std::vector<std::string>(
                                 {"initialize", "listener(1)", "update(40)", "open(sound\\x.wav,1)",
                                  "open(sound\\x.wav,0)", "open(sound\\y.wav,1)", "open(sound\\y.wav,1)",
                                  "open(sound\\missing.wav,1)", "open(sound\\missing.wav,1)"}));
}

void expectPlacedAt(RecordingChannel const& channel, float x) {
    ASSERT_FALSE(channel.mPositions.empty());
    const Vec3& p = channel.mPositions.back();
    EXPECT_TRUE(p[0] == x && p[1] == 2 && p[2] == 3 && !channel.mMoving)
        << p[0] << ", " << p[1] << ", " << p[2];
}

using SoundNodeTest = SceneTest::EngineTest;

TEST_F(SoundNodeTest, ChannelsFollowTheSoundNodeFromTheFirstPass) {
    Velun::SceneRoot scene(1);
    Velun::TransformationNode carrier;
    Velun::Sound sound;
    carrier.setChild(sound);
    carrier.translate(1, 2, 3, false);
    scene.getRoot()->attachChild(carrier);

    SharedPtr<RecordingChannel> a(new RecordingChannel()), b(new RecordingChannel());
    EXPECT_EQ(sound.addChannel(a), 0u);
    sound.addChannel(SharedPtr<SoundChannel>());
    EXPECT_EQ(sound.addChannel(b), 2u);
    scene.getUpdateTraverser()->run(0);
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
