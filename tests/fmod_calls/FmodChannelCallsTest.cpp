#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "core/LogManager.h"
#include "core/VelunCore.h"
#include "plugins/sound/fmod/FmodSoundEngine.h"
#include "plugins/sound/fmod/layer/fmod.hpp"
#include "support/ChannelLog.h"

using Dorvan::SharedPtr;
using Velun::SoundChannel;
using Velun::SoundSource;
typedef std::vector<std::string> Calls;
typedef Dorvan::TVector<float, 3> Vec3;

// A stand-in of the FMOD layer that records what it is asked, one entry per call, e.g.
// "playSound(-1,1)" or "setVolume(0.5)", and gives the results set per call name
// (FMOD_OK for any other).
namespace {

struct Recording {
    Calls mCalls;
    std::map<std::string, FMOD_RESULT> mResults;
    bool mVoicePaused = false;       // what getPaused reports
    std::set<FMOD::Sound*> mSounds;  // open ones; the system's release frees them
} gRecording;

struct StandInSystem : public FMOD::System {};
struct StandInSound : public FMOD::Sound {};

FMOD_RESULT record(const std::string& name, const std::string& arguments = std::string()) {
    gRecording.mCalls.push_back(name + (arguments.empty() ? std::string() : "(" + arguments + ")"));
    return gRecording.mResults.count(name) ? gRecording.mResults[name] : FMOD_OK;
}

template <class T>
std::string text(T value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

}  // namespace

FMOD_RESULT FMOD_System_Create(FMOD::System** system) {
    *system = new StandInSystem();
    return record("System_Create");
}

namespace FMOD {

FMOD_RESULT System::init(int, FMOD_INITFLAGS, void*) { return record("init"); }
FMOD_RESULT System::initLoopback(int, FMOD_INITFLAGS, int) { return record("initLoopback"); }
FMOD_RESULT System::renderLoopback(float*, int) { return record("renderLoopback"); }
FMOD_RESULT System::release() {
    FMOD_RESULT result = record("release");
    for (Sound* sound : gRecording.mSounds)
        delete static_cast<StandInSound*>(sound);
    gRecording.mSounds.clear();
    delete static_cast<StandInSystem*>(this);
    return result;
}
FMOD_RESULT System::update() { return record("update"); }
FMOD_RESULT System::set3DListenerAttributes(int, const FMOD_VECTOR*, const FMOD_VECTOR*, const FMOD_VECTOR*,
                                            const FMOD_VECTOR*) {
    return record("set3DListenerAttributes");
}
FMOD_RESULT System::createSound(const char* name, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO*, Sound** sound) {
    std::ostringstream arguments;
    arguments << name << ",0x" << std::hex << std::uppercase << mode;
    FMOD_RESULT result = record("createSound", arguments.str());
    *sound = result == FMOD_OK ? new StandInSound() : nullptr;
    if (*sound)
        gRecording.mSounds.insert(*sound);
    return result;
}
FMOD_RESULT System::playSound(FMOD_CHANNELINDEX channelid, Sound*, bool paused, Channel** channel) {
    static std::uintptr_t handle = 0;  // numbers, as in the library; each voice gets the next one
    FMOD_RESULT result = record("playSound", text(channelid) + "," + text(paused));
    if (result == FMOD_OK)
        *channel = reinterpret_cast<Channel*>(handle += 0x10);
    return result;
}

FMOD_RESULT Sound::release() {
    gRecording.mSounds.erase(this);
    delete static_cast<StandInSound*>(this);
    return record("Sound::release");
}

FMOD_RESULT Channel::isPlaying(bool* isplaying) {
    *isplaying = true;
    return record("isPlaying");
}
FMOD_RESULT Channel::stop() { return record("stop"); }
FMOD_RESULT Channel::setPaused(bool paused) { return record("setPaused", text(paused)); }
FMOD_RESULT Channel::getPaused(bool* paused) {
    *paused = gRecording.mVoicePaused;
    return record("getPaused");
}
FMOD_RESULT Channel::setVolume(float volume) { return record("setVolume", text(volume)); }
FMOD_RESULT Channel::setMute(bool mute) { return record("setMute", text(mute)); }
FMOD_RESULT Channel::setLoopCount(int loopcount) { return record("setLoopCount", text(loopcount)); }
FMOD_RESULT Channel::set3DAttributes(const FMOD_VECTOR* pos, const FMOD_VECTOR*) {
    return record("set3DAttributes", text(pos->x) + "," + text(pos->y) + "," + text(pos->z));
}

}  // namespace FMOD

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
        gRecording = Recording();
        ASSERT_TRUE(engine.initialize());
        source = engine.createSoundSource(info("engine.wav"), true);
        ASSERT_TRUE(source);
        calls();
    }
    void TearDown() override {
        engine.shutdown();  // the stand-in frees the sounds still held
        Velun::VelunCore::getSingleton().shutdown();
    }
    static Velun::NameMapper::ResourceInfo info(const std::string& name) {
        return Velun::NameMapper::ResourceInfo(name, ".\\sound\\" + name, "wav");
    }
    // The calls since the last look.
    Calls calls() { return std::exchange(gRecording.mCalls, Calls()); }
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

TEST_F(FmodChannelCalls, PlayUnpausesTheNewVoiceAndBuildsAnotherWhenTheHandleIsGone) {
    channel = engine.createChannel(source);
    EXPECT_EQ(calls(), Calls({"playSound(-1,1)", "setVolume(1)", "setMute(0)", "setLoopCount(0)",
                              "set3DAttributes(0,0,0)"}));
    EXPECT_TRUE(channel->play());
    EXPECT_EQ(calls(), Calls({"isPlaying", "setPaused(0)"}));
    EXPECT_FALSE(channel->setSoundSource(SharedPtr<SoundSource>(new OtherSource())));

    // A handle the library took back is dropped silently; what is set meanwhile is kept.
    EXPECT_TRUE(channel->setVolume(0.5f));
    gRecording.mResults["isPlaying"] = FMOD_ERR_INVALID_HANDLE;
    EXPECT_FALSE(channel->isPlaying());
    gRecording.mResults.clear();
    EXPECT_TRUE(channel->setRepeat(true));
    channel->set3DAttributes(Vec3(1, 2, 3), Vec3(0, 0, 0));
    EXPECT_EQ(calls(), Calls({"setVolume(0.5)", "isPlaying"}));
    EXPECT_FALSE(channel->stop());
    EXPECT_TRUE(channel->play());
    EXPECT_EQ(calls(), Calls({"playSound(-1,1)", "setVolume(0.5)", "setMute(0)", "setLoopCount(-1)",
                              "set3DAttributes(1,2,3)", "isPlaying", "setPaused(0)"}));
    EXPECT_TRUE(channel->stop());
    EXPECT_EQ(calls(), Calls({"stop"}));
    EXPECT_TRUE(log.mLines.empty());
}

TEST_F(FmodChannelCalls, FailuresCostNeitherTheSoundNorTheVoiceAndAreLoggedWithTheirTexts) {
    gRecording.mResults["playSound"] = FMOD_ERR_CHANNEL_ALLOC;
    newChannel();
    EXPECT_FALSE(channel->play());
    EXPECT_EQ(calls(), Calls({"playSound(-1,1)"}));
    gRecording.mResults.clear();
    EXPECT_TRUE(channel->play());
    EXPECT_EQ(calls().back(), "setPaused(0)");

    // A sound played at the listener refuses a place; the voice stays controllable.
    gRecording.mResults["set3DAttributes"] = FMOD_ERR_NEEDS3D;
    EXPECT_FALSE(channel->set3DAttributes(Vec3(1, 0, 0), Vec3(0, 0, 0)));
    EXPECT_TRUE(channel->stop());
    EXPECT_EQ(calls(), Calls({"set3DAttributes(1,0,0)", "stop"}));
    EXPECT_EQ(log.mLines, Calls(2, "plugins.sound.fmod: FMOD Error while creating new channel: "
                                   "No voice is free to play the sound."));
    ASSERT_TRUE(channel->play());
    for (FMOD_RESULT unknown : {69, -3}) {  // codes the library has no text for
        gRecording.mResults["setVolume"] = unknown;
        EXPECT_FALSE(channel->setVolume(0.2f));
        EXPECT_EQ(log.mLines.back(), "plugins.sound.fmod: FMOD Error while setting volume: Unknown error.");
    }

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

TEST_F(FmodChannelCalls, SourcesOpenPlacedOrNotMissingFilesAreLoggedAndDroppedEndlessVoicesStop) {
    engine.createSoundSource(info("a.wav"), true);
    engine.createSoundSource(info("a.wav"), false);
    gRecording.mResults["createSound"] = FMOD_ERR_FILE_NOTFOUND;
    EXPECT_FALSE(engine.createSoundSource(info("gone.wav"), false));
    EXPECT_EQ(calls(), Calls({"createSound(./sound/a.wav,0xD2)", "Sound::release",
                              "createSound(./sound/a.wav,0x400C2)", "Sound::release",
                              "createSound(./sound/gone.wav,0x400C2)"}));
    EXPECT_EQ(log.mLines, Calls({"plugins.sound.fmod: FMOD Error: The sound file was not found."}));
    // A dropped channel stops only a voice that would never end.
    const struct {
        const char* name;
        bool paused, repeat, stopped;
    } cases[] = {{"paused", true, false, true},
                 {"endless", false, true, true},
                 {"finite and playing", false, false, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        newChannel();
        channel->setRepeat(c.repeat);
        gRecording.mVoicePaused = c.paused;
        calls();
        channel = SharedPtr<SoundChannel>();
        EXPECT_EQ(calls(), c.stopped ? Calls({"getPaused", "stop"}) : Calls({"getPaused"}));
    }
}

}  // namespace
