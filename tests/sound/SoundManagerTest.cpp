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
    void runPass(std::int64_t timestamp) {
        for (Velun::Process* process : *manager.getProcessList())
            process->run(timestamp);
    }

    RecordingSoundEngine engine;
    SoundManager manager;
};

struct CacheCase {
    const char* name;
    bool firstPositional, secondPositional, useCache;
    size_t engineCalls;
    bool same;
};
const CacheCase kCacheCases[] = {
    {"cached twice", true, true, true, 1, true},
    {"uncached twice", true, true, false, 2, false},
    {"positional and not kept apart", true, false, true, 2, false},
};

TEST_F(SoundManagerTest, SourceCacheByNameAndKind) {
    for (const CacheCase& c : kCacheCases) {
        SCOPED_TRACE(c.name);
        SoundManager fresh;
        fresh.setSoundNameMapper(manager.getSoundNameMapper());
        ASSERT_TRUE(fresh.registerSoundEngine(engine));
        engine.mOpened.clear();
        SharedPtr<SoundSource> a = fresh.getSoundSource("x.wav", c.firstPositional, c.useCache);
        SharedPtr<SoundSource> b = fresh.getSoundSource("x.wav", c.secondPositional, c.useCache);
        ASSERT_TRUE(a && b);
        EXPECT_EQ(engine.mOpened.size(), c.engineCalls);
        EXPECT_EQ(a == b, c.same);
        // Held by a, by b when it is the same, and by the cache when it keeps it.
        EXPECT_EQ(a.getRefCount(), 1 + int(c.same) + int(c.useCache));
    }
    EXPECT_EQ(engine.mOpened[0], "sound\\x.wav");
}

TEST_F(SoundManagerTest, FailedOpenIsNotCached) {
    EXPECT_FALSE(manager.getSoundSource("missing.wav", true, true));
    EXPECT_FALSE(manager.getSoundSource("missing.wav", true, true));
    EXPECT_EQ(engine.mOpened.size(), 2u);
}

TEST_F(SoundManagerTest, NamedChannels) {
    SharedPtr<SoundSource> source = manager.getSoundSource("x.wav", true, true);
    SharedPtr<SoundChannel> unnamed = manager.createChannel(source);
    ASSERT_TRUE(unnamed);
    EXPECT_EQ(unnamed.getRefCount(), 1);
    EXPECT_FALSE(manager.getChannel(""));

    SharedPtr<SoundChannel> first = manager.createChannel(source, "music");
    EXPECT_EQ(manager.getChannel("music"), first);
    SharedPtr<SoundChannel> second = manager.createChannel(source, "music");
    EXPECT_EQ(manager.getChannel("music"), second);
    EXPECT_EQ(first.getRefCount(), 1);
    EXPECT_FALSE(manager.getChannel("unknown"));
}

TEST_F(SoundManagerTest, EngineUpdatesListenerAndRegistration) {
    manager.updateListenerAttributes(Vec3(1, 2, 3), Vec3(0, 0, 0), Vec3(0, 0, -1), Vec3(0, 1, 0), 0);
    EXPECT_FLOAT_EQ(engine.mListener[2], 3.0f);
    EXPECT_EQ(engine.mListenerIndex, 0u);

    ASSERT_TRUE(manager.registerSoundEngine(engine));
    EXPECT_EQ(engine.mInitializeCalls, 1);
    runPass(40);
    EXPECT_EQ(engine.mUpdates, std::vector<std::int64_t>({40}));

    RecordingSoundEngine broken;
    broken.mFailInitialize = true;
    EXPECT_FALSE(manager.registerSoundEngine(broken));
    EXPECT_EQ(manager.getSoundEngine(), &engine);
    EXPECT_EQ(manager.getProcessList()->size(), 1u);
}

TEST_F(SoundManagerTest, UnregisteringReleasesWhatTheEngineMade) {
    SharedPtr<SoundSource> source = manager.getSoundSource("x.wav", true, true);
    SharedPtr<SoundChannel> channel = manager.createChannel(source, "music");
    manager.unregisterSoundEngine(engine);
    EXPECT_TRUE(manager.getProcessList()->empty());
    EXPECT_EQ(source.getRefCount(), 1);
    EXPECT_EQ(channel.getRefCount(), 1);
    // Without an engine the game runs on silently.
    EXPECT_FALSE(manager.getSoundSource("x.wav", true, true));
    EXPECT_FALSE(manager.createChannel(source));
    manager.updateListenerAttributes(Vec3(5, 5, 5), Vec3(0, 0, 0), Vec3(0, 0, -1), Vec3(0, 1, 0), 0);
    EXPECT_FLOAT_EQ(engine.mListener[0], 0.0f);
}

}  // namespace
