#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>

#include "TestSounds.h"
#include "core/LogManager.h"
#include "core/ProcessManager.h"
#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "plugins/sound/fmod/FmodSoundEngine.h"
#include "scene/Branch.h"
#include "scene/SceneGraph.h"
#include "scene/SceneManager.h"
#include "scene/TransformationNode.h"
#include "sound/Sound.h"
#include "sound/SoundManager.h"
#include "support/ChannelLog.h"

using Dorvan::SharedPtr;
using Velun::SoundChannel;
using Velun::VelunCore;
typedef Dorvan::TVector<float, 3> Vec3;

using namespace FmodTest;

namespace {

// Energy of one channel (0 left, 1 right) of interleaved stereo frames.
double energy(const std::vector<float>& stereo, int channel, size_t from = 0, size_t to = ~size_t(0)) {
    double sum = 0.0;
    for (size_t i = from; i < stereo.size() / 2 && i < to; ++i)
        sum += static_cast<double>(stereo[2 * i + channel]) * stereo[2 * i + channel];
    return sum;
}

// The FMOD engine on OpenAL Soft's loopback device: what it mixes is rendered into
// memory, with an engine update after every 20 ms, as a game at 50 frames per second.
class FmodLoopback : public testing::Test {
protected:
    void SetUp() override {
        Velun::VelunCore::getSingleton().startup();
        Velun::VelunCore::getSingleton().getLogManager().registerBackend(log);
        ASSERT_TRUE(engine.initializeLoopback(kRate));
        ASSERT_TRUE(writeSound(dir.file("tone.wav"), tone(440, 0.2f), 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    }
    void TearDown() override {
        engine.shutdown();
        Velun::VelunCore::getSingleton().shutdown();
    }
    SharedPtr<SoundChannel> channel(const std::string& file = "tone.wav", bool positional = true) {
        return engine.createChannel(engine.createSoundSource(
            Velun::NameMapper::ResourceInfo(file, dir.file(file), "wav"), positional));
    }
    std::vector<float> render(float seconds) {
        const int step = kRate / 50;
        std::vector<float> out(static_cast<size_t>(seconds * kRate) / step * step * 2);
        for (size_t frame = 0; frame < out.size() / 2; frame += step) {
            engine.renderLoopback(&out[2 * frame], step);
            engine.update(0);
        }
        return out;
    }

    VelunTest::ChannelLog log;
    TempDir dir;
    Velun::FmodSoundEngine engine;
};

// A one-shot plays to its end; a loop three units to the listener's left plays until
// stopped, on the side where the listener's turns put it.
TEST_F(FmodLoopback, OneShotsPlayToTheirEndAndLoopsUntilStoppedOnTheirSide) {
    channel()->play();  // dropped with its source: it plays to its end at 0.2 s
    std::vector<float> out = render(0.3f);
    EXPECT_GT(energy(out, 0, kRate / 10, kRate / 5), 1.0);
    EXPECT_EQ(energy(out, 0, kRate / 5), 0.0);

    SharedPtr<SoundChannel> looping = channel(), once = channel("tone.wav", false);
    looping->setRepeat(true);
    looping->set3DAttributes(Vec3(-3, 0, 0), Vec3(0, 0, 0));
    ASSERT_TRUE(looping->play() && once->play());
    out = render(0.6f);
    EXPECT_GT(energy(out, 0, kRate / 2), 10.0);  // past the tone's length
    EXPECT_GT(energy(out, 0, kRate / 2), 100.0 * energy(out, 1, kRate / 2));
    EXPECT_TRUE(looping->isPlaying());
    EXPECT_FALSE(once->isPlaying());
    engine.updateListenerAttributes(Vec3(0, 0, 0), Vec3(0, 0, 0), Vec3(0, 0, 1), Vec3(0, 1, 0), 0);
    render(0.04f);  // the turn reaches the mix
    out = render(0.2f);
    EXPECT_GT(energy(out, 1), 100.0 * energy(out, 0));
    EXPECT_TRUE(looping->stop());
    EXPECT_EQ(energy(render(0.1f), 1), 0.0);
    EXPECT_TRUE(looping->play());  // again from the start
    EXPECT_GT(energy(render(0.1f), 1), 10.0);
    // A quarter turn: facing +x, a source towards -z is on the left.
    looping->set3DAttributes(Vec3(0, 0, -3), Vec3(0, 0, 0));
    engine.updateListenerAttributes(Vec3(0, 0, 0), Vec3(0, 0, 0), Vec3(1, 0, 0), Vec3(0, 1, 0), 0);
    render(0.04f);
    out = render(0.2f);
    EXPECT_GT(energy(out, 0), 100.0 * energy(out, 1));
    EXPECT_TRUE(log.mLines.empty());
}

TEST_F(FmodLoopback, VoicesPastTheSourceLimitFailCleanlyAndTheRestPlay) {
    SharedPtr<Velun::SoundSource> source = engine.createSoundSource(
        Velun::NameMapper::ResourceInfo("tone.wav", dir.file("tone.wav"), "wav"), true);
    std::vector<SharedPtr<SoundChannel>> channels(300);
    int played = 0;
    for (SharedPtr<SoundChannel>& channel : channels)
        played += (channel = engine.createChannel(source))->play() ? 1 : 0;
    EXPECT_GE(played, 200);
    ASSERT_LT(played, 300);
    EXPECT_EQ(log.mLines.back(),
              "plugins.sound.fmod: FMOD Error while playing sound: No voice is free to play the sound.");
    render(0.1f);
    channels.clear();
    render(0.3f);
    EXPECT_TRUE(engine.createChannel(source)->play());
}

// Each format streams through the queue of buffers, refilled by the updates, without
// a gap: the mix is the file's signal, scaled by the channel's gain.
TEST_F(FmodLoopback, StreamsPlayThroughWithoutAGap) {
    const struct {
        const char* name;
        int format;
        double tolerance;  // of the rest against the signal, in energy; Vorbis is lossy
    } formats[] = {{"long.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1e-4},
                   {"long.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.05}};
    const std::vector<float> signal = tone(300, 1.5f, 0.3f);
    for (const auto& format : formats) {
        SCOPED_TRACE(format.name);
        ASSERT_TRUE(writeSound(dir.file(format.name), signal, 1, format.format));
        SharedPtr<SoundChannel> stream = channel(format.name, false);
        ASSERT_TRUE(stream && stream->play());
        std::vector<float> out = render(1.6f);
        double cross = 0.0, own = 0.0, rest = 0.0;
        for (size_t i = 0; i < signal.size(); ++i) {
            cross += static_cast<double>(out[2 * i]) * signal[i];
            own += static_cast<double>(signal[i]) * signal[i];
        }
        const double gain = cross / own;
        for (size_t i = 0; i < signal.size(); ++i)
            rest += (out[2 * i] - gain * signal[i]) * (out[2 * i] - gain * signal[i]);
        EXPECT_GT(gain, 0.3);
        EXPECT_LT(rest, format.tolerance * gain * gain * own);
    }
}

// OpenAL Soft reads its configuration once per process, so the tests of a real device
// run the engine in a child: this program again, on one test of the FmodChild suite,
// with the configuration named in its environment. The child tests do nothing elsewhere.
const char* const kChildDir = "VELUN_FMOD_CHILD_DIR";

// Runs the child test with OpenAL Soft on `drivers`, the wave writer's file in `dir`.
int runChild(const std::string& test, const TempDir& dir, const std::string& drivers) {
    std::ofstream(dir.file("alsoft.conf"))
        << "[general]\ndrivers = " << drivers
        << "\nchannels = stereo\nsample-type = int16\nfrequency = " << kRate
        << "\n[wave]\nfile = " << dir.file("out.wav") << "\n";
    const int status = std::system(
        (std::string(kChildDir) + "=" + dir.file("") + " ALSOFT_CONF=" + dir.file("alsoft.conf") + " " +
         std::filesystem::read_symlink("/proc/self/exe").string() + " --gtest_filter=FmodChild." + test)
            .c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(FmodOutput, ASoundNodeIsWrittenToTheWaveOutputOnItsSideAndWithoutADeviceTheGameRunsSilently) {
    TempDir dir;
    std::filesystem::create_directory(dir.file("sound"));
    ASSERT_TRUE(
        writeSound(dir.file("sound/tone.wav"), tone(440, 0.25f), 2, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    ASSERT_EQ(runChild("PlaysASoundNode", dir, "wave"), 0);
    SndfileHandle file(dir.file("out.wav"));
    ASSERT_EQ(file.channels(), 2);
    std::vector<float> out(static_cast<size_t>(file.frames()) * 2);
    file.read(out.data(), static_cast<sf_count_t>(out.size()));
    EXPECT_GT(energy(out, 0), 100.0 * energy(out, 1));
    EXPECT_EQ(runChild("RunsWithoutADevice", dir, "no-such-driver"), 0);
}

// In a child, the game started in the folder the parent made, its log lines in `log`.
class FmodChild : public testing::Test {
protected:
    void SetUp() override {
        if (!getenv(kChildDir) || chdir(getenv(kChildDir)) != 0)
            GTEST_SKIP();
        core.startup();
        core.getLogManager().registerBackend(log);
        core.setup(true);
    }
    Velun::SoundManager& sounds() { return core.getResourceManager().getSoundManager(); }

    VelunTest::ChannelLog log;
    VelunCore& core = VelunCore::getSingleton();
};

// A jeep's engine on a Sound node three units to the listener's left for 300 frames.
TEST_F(FmodChild, PlaysASoundNode) {
    SharedPtr<SoundChannel> engineSound =
        sounds().createChannel(sounds().getSoundSource("tone.wav", true, true));
    ASSERT_TRUE(engineSound);
    Velun::SceneGraph& scene = core.getSceneManager().createSceneGraph();
    Velun::TransformationNode jeep;
    Velun::Sound sound;
    jeep.setChild(sound);
    jeep.translate(-3, 0, 0, false);
    scene.getRoot()->attachChild(jeep);
    sound.addChannel(engineSound);
    engineSound->setRepeat(true);
    EXPECT_TRUE(engineSound->play());
    for (int frame = 0; frame < 300; ++frame) {
        core.getProcessManager().update(true);
        usleep(2000);
    }
    scene.getRoot()->detachChild(jeep.getNodeId());
    core.shutdown();
    EXPECT_TRUE(log.mLines.empty());
}

TEST_F(FmodChild, RunsWithoutADevice) {
    EXPECT_FALSE(sounds().getSoundEngine());
    EXPECT_FALSE(sounds().createChannel(sounds().getSoundSource("tone.wav", true, true)));
    for (int frame = 0; frame < 3; ++frame)
        core.getProcessManager().update(true);
    EXPECT_EQ(log.mLines,
              std::vector<std::string>(
                  {"plugins.sound.fmod: FMOD Error: The sound output device could not be opened."}));
    core.shutdown();
}

}  // namespace
