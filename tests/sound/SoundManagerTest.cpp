#include <gtest/gtest.h>

#include "RecordingSoundEngine.h"
#include "core/FileNameMapper.h"
#include "sound/SoundManager.h"

using Dorvan::SharedPtr;
using SoundTest::RecordingSoundEngine;
using SoundTest::Vec3;
using Velun::SoundChannel;
using Velun::SoundManager;
using Velun::SoundSource;

namespace {

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
    SoundManager manager;
};

TEST_F(SoundManagerTest, SourceCacheByNameAndKind) {
    const struct {
        const char* name;
        bool firstPositional, secondPositional, useCache;
        size_t engineCalls;
        bool same;
    } cases[] = {
        {"cached twice", true, true, true, 1, true},
        {"uncached twice", true, true, false, 2, false},
        {"positional and not kept apart", true, false, true, 2, false},
        {"missing, never cached", true, true, true, 2, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        SoundManager fresh;
        fresh.setSoundNameMapper(manager.getSoundNameMapper());
        ASSERT_TRUE(fresh.registerSoundEngine(engine));
        engine.mOpened.clear();
        const char* file = c.name[0] == 'm' ? "missing.wav" : "x.wav";
        SharedPtr<SoundSource> a = fresh.getSoundSource(file, c.firstPositional, c.useCache);
        SharedPtr<SoundSource> b = fresh.getSoundSource(file, c.secondPositional, c.useCache);
        EXPECT_EQ(engine.mOpened.size(), c.engineCalls);
        if (!a)
            continue;
        EXPECT_EQ(a == b, c.same);
        // Held by a, by b when it is the same, and by the cache when it keeps it.
        EXPECT_EQ(a.getRefCount(), 1 + int(c.same) + int(c.useCache));
    }
    EXPECT_EQ(engine.mOpened[0], "sound\\missing.wav");
}

TEST_F(SoundManagerTest, NamedChannelsAreReplacedAndReleased) {
    SharedPtr<SoundSource> source = manager.getSoundSource("x.wav", true, true);
    SharedPtr<SoundChannel> unnamed = manager.createChannel(source);
    ASSERT_TRUE(unnamed);
    EXPECT_EQ(unnamed.getRefCount(), 1);
    EXPECT_FALSE(manager.getChannel(""));
    SharedPtr<SoundChannel> first = manager.createChannel(source, "music");
    SharedPtr<SoundChannel> second = manager.createChannel(source, "music");
    EXPECT_EQ(manager.getChannel("music"), second);
    EXPECT_EQ(first.getRefCount(), 1);
}

TEST_F(SoundManagerTest, TheEngineIsUpdatedUntilUnregisteredAndItsObjectsReleased) {
    listenAt(1);
    EXPECT_FLOAT_EQ(engine.mListener[0], 1.0f);
    ASSERT_TRUE(manager.registerSoundEngine(engine));
    EXPECT_EQ(engine.mInitializeCalls, 1);
    for (Velun::Process* process : *manager.getProcessList())
        process->run(40);
    EXPECT_EQ(engine.mUpdates, std::vector<std::int64_t>({40}));
    RecordingSoundEngine broken;
    broken.mFail = true;
    EXPECT_FALSE(manager.registerSoundEngine(broken));
    EXPECT_EQ(manager.getSoundEngine(), &engine);
    EXPECT_EQ(manager.getProcessList()->size(), 1u);

    SharedPtr<SoundSource> source = manager.getSoundSource("x.wav", true, true);
    SharedPtr<SoundChannel> channel = manager.createChannel(source, "music");
    manager.unregisterSoundEngine(engine);
    EXPECT_TRUE(manager.getProcessList()->empty());
    EXPECT_EQ(source.getRefCount(), 1);
    EXPECT_EQ(channel.getRefCount(), 1);
    // Without an engine the game runs on silently.
    EXPECT_FALSE(manager.getSoundSource("x.wav", true, true));
    EXPECT_FALSE(manager.createChannel(source));
    listenAt(5);
    EXPECT_FLOAT_EQ(engine.mListener[0], 1.0f);
}

}  // namespace
