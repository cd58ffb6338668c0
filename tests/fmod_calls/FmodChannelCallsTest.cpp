#include <gtest/gtest.h>

#include "RecordingLayer.h"
#include "core/LogManager.h"
#include "core/VelunCore.h"
#include "plugins/sound/fmod/FmodSoundEngine.h"
#include "support/ChannelLog.h"

using Dorvan::SharedPtr;
using FmodCalls::recording;
using Velun::SoundChannel;
using Velun::SoundSource;
typedef std::vector<std::string> Calls;

namespace {

class OtherSource : public SoundSource {
public:
    int getLength() const override { return 0; }
    int getChannels() const override { return 0; }
};

class FmodChannelCalls : public testing::Test {
protected:
    void SetUp() override {
        Velun::VelunCore::getSingleton().startup();
        Velun::VelunCore::getSingleton().getLogManager().registerBackend(log);
        recording() = FmodCalls::Recording();
        ASSERT_TRUE(engine.initialize());
        source = engine.createSoundSource(info("engine.wav"), true);
        ASSERT_TRUE(source);
        calls();
    }
    void TearDown() override {
        channel = SharedPtr<SoundChannel>();
        source = SharedPtr<SoundSource>();
        engine.shutdown();
        Velun::VelunCore::getSingleton().shutdown();
    }
    static Velun::NameMapper::ResourceInfo info(const std::string& name) {
        return Velun::NameMapper::ResourceInfo(name, ".\\sound\\" + name, "wav");
    }
    // The calls since the last look.
    Calls calls() {
        Calls made;
        made.swap(recording().mCalls);
        return made;
    }
    void newChannel() {
        channel = engine.createChannel(source);
        ASSERT_TRUE(channel);
        calls();
    }

    VelunTest::ChannelLog log;
    Velun::FmodSoundEngine engine;
    SharedPtr<SoundSource> source;
    SharedPtr<SoundChannel> channel;
};

TEST_F(FmodChannelCalls, NewChannelHoldsAPausedVoiceAndPlayUnpausesIt) {
    channel = engine.createChannel(source);
    EXPECT_EQ(calls(), Calls({"playSound(-1,1)", "setVolume(1)", "setMute(0)", "setLoopCount(0)",
                              "set3DAttributes(0,0,0)"}));
    EXPECT_TRUE(channel->play());
    EXPECT_EQ(calls(), Calls({"isPlaying", "setPaused(0)"}));
    EXPECT_TRUE(channel->isPaused());
    EXPECT_FALSE(channel->setSoundSource(SharedPtr<SoundSource>(new OtherSource())));
    EXPECT_TRUE(channel->stop());
    EXPECT_EQ(calls(), Calls({"stop"}));
    EXPECT_TRUE(log.mLines.empty());
}

TEST_F(FmodChannelCalls, HandleTakenBackIsDroppedSilentlyAndPlayBuildsANewVoice) {
    newChannel();
    EXPECT_TRUE(channel->setVolume(0.5f));
    recording().mResults["isPlaying"] = FMOD_ERR_INVALID_HANDLE;
    EXPECT_FALSE(channel->isPlaying());
    recording().mResults.clear();
    EXPECT_TRUE(channel->setRepeat(true));
    channel->set3DAttributes(Dorvan::TVector<float, 3>(1, 2, 3), Dorvan::TVector<float, 3>(0, 0, 0));
    EXPECT_EQ(calls(), Calls({"setVolume(0.5)", "isPlaying"}));
    EXPECT_FALSE(channel->stop());

    EXPECT_TRUE(channel->play());
    EXPECT_EQ(calls(), Calls({"playSound(-1,1)", "setVolume(0.5)", "setMute(0)", "setLoopCount(-1)",
                              "set3DAttributes(1,2,3)", "isPlaying", "setPaused(0)"}));
    EXPECT_TRUE(log.mLines.empty());
}

TEST_F(FmodChannelCalls, FailuresCostNeitherTheSoundNorTheVoice) {
    recording().mResults["playSound"] = FMOD_ERR_CHANNEL_ALLOC;
    newChannel();
    EXPECT_FALSE(channel->play());
    EXPECT_EQ(calls(), Calls({"playSound(-1,1)"}));
    recording().mResults.clear();
    EXPECT_TRUE(channel->play());
    EXPECT_EQ(calls().back(), "setPaused(0)");

    // A sound played at the listener refuses a place; the voice stays controllable.
    recording().mResults["set3DAttributes"] = FMOD_ERR_NEEDS3D;
    EXPECT_FALSE(
        channel->set3DAttributes(Dorvan::TVector<float, 3>(1, 0, 0), Dorvan::TVector<float, 3>(0, 0, 0)));
    EXPECT_TRUE(channel->stop());
    EXPECT_EQ(calls(), Calls({"set3DAttributes(1,0,0)", "stop"}));
    EXPECT_EQ(log.mLines, Calls({"plugins.sound.fmod: FMOD Error while creating new channel: "
                                 "No voice is free to play the sound.",
                                 "plugins.sound.fmod: FMOD Error while creating new channel: "
                                 "No voice is free to play the sound."}));

    // Held past shutdown, they no longer call in.
    engine.shutdown();
    calls();
    EXPECT_FALSE(channel->play());
    EXPECT_FALSE(channel->setVolume(0.3f));
    EXPECT_FALSE(channel->isPlaying());
    channel = SharedPtr<SoundChannel>();
    source = SharedPtr<SoundSource>();
    EXPECT_TRUE(calls().empty());
}

TEST_F(FmodChannelCalls, ErrorsAreLoggedWithTheirTexts) {
    const struct {
        FMOD_RESULT code;
        const char* text;
    } cases[] = {{FMOD_ERR_NEEDS3D, "The call needs a sound opened with FMOD_3D."},
                 {69, "Unknown error."},
                 {-3, "Unknown error."}};
    newChannel();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        log.mLines.clear();
        recording().mResults["setVolume"] = c.code;
        EXPECT_FALSE(channel->setVolume(0.2f));
        EXPECT_EQ(log.mLines,
                  Calls({std::string("plugins.sound.fmod: FMOD Error while setting volume: ") + c.text}));
    }
}

TEST_F(FmodChannelCalls, SourcesOpenStreamsPlacedOrAtTheListenerAndMissingFilesAreLogged) {
    engine.createSoundSource(info("a.wav"), true);
    engine.createSoundSource(info("a.wav"), false);
    recording().mResults["createSound"] = FMOD_ERR_FILE_NOTFOUND;
    EXPECT_FALSE(engine.createSoundSource(info("gone.wav"), false));
    EXPECT_EQ(calls(), Calls({"createSound(./sound/a.wav,0xD2)", "Sound::release",
                              "createSound(./sound/a.wav,0x400C2)", "Sound::release",
                              "createSound(./sound/gone.wav,0x400C2)"}));
    EXPECT_EQ(log.mLines, Calls({"plugins.sound.fmod: FMOD Error: The sound file was not found."}));
}

TEST_F(FmodChannelCalls, DroppedChannelStopsOnlyAVoiceThatWouldNeverEnd) {
    const struct {
        const char* name;
        bool paused;
        bool repeat;
        bool stopped;
    } cases[] = {{"paused", true, false, true},
                 {"endless", false, true, true},
                 {"finite and playing", false, false, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        newChannel();
        channel->setRepeat(c.repeat);
        recording().mVoicePaused = c.paused;
        calls();
        channel = SharedPtr<SoundChannel>();
        Calls expected = {"getPaused"};
        if (c.stopped)
            expected.push_back("stop");
        EXPECT_EQ(calls(), expected);
    }
}

}  // namespace
