#include <gtest/gtest.h>

#include "TestSounds.h"
#include "core/LogManager.h"
#include "core/VelunCore.h"
#include "plugins/sound/fmod/FmodSoundEngine.h"
#include "support/ChannelLog.h"

using Dorvan::SharedPtr;
using FmodTest::energy;
using FmodTest::kRate;
using Velun::SoundChannel;
typedef Dorvan::TVector<float, 3> Vec3;

namespace {

// The FMOD engine on OpenAL Soft's loopback device: what it mixes is rendered into
// memory, with an engine update after every 20 ms, as a game at 50 frames per second.
class FmodLoopback : public testing::Test {
protected:
    void SetUp() override {
        Velun::VelunCore::getSingleton().startup();
        Velun::VelunCore::getSingleton().getLogManager().registerBackend(log);
        ASSERT_TRUE(engine.initializeLoopback(kRate));
        ASSERT_TRUE(FmodTest::writeSound(dir.file("tone.wav"), FmodTest::tone(440, 0.2f), 1,
                                         SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    }
    void TearDown() override {
        engine.shutdown();
        Velun::VelunCore::getSingleton().shutdown();
    }
    SharedPtr<Velun::SoundSource> open(const std::string& file = "tone.wav", bool positional = true) {
        return engine.createSoundSource(Velun::NameMapper::ResourceInfo(file, dir.file(file), "wav"),
                                        positional);
    }
    SharedPtr<SoundChannel> channel(const std::string& file = "tone.wav", bool positional = true) {
        return engine.createChannel(open(file, positional));
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
    FmodTest::TempDir dir;
    Velun::FmodSoundEngine engine;
};

TEST_F(FmodLoopback, LeftStaysLeftWhicheverWayTheListenerFaces) {
    SharedPtr<SoundChannel> left = channel();
    left->setRepeat(true);
    left->set3DAttributes(Vec3(-3, 0, 0), Vec3(0, 0, 0));
    ASSERT_TRUE(left->play());
    std::vector<float> ahead = render(0.2f);
    EXPECT_GT(energy(ahead, 0), 100.0 * energy(ahead, 1));
    EXPECT_GT(energy(ahead, 0), 1.0);
    engine.updateListenerAttributes(Vec3(0, 0, 0), Vec3(0, 0, 0), Vec3(0, 0, 1), Vec3(0, 1, 0), 0);
    render(0.04f);  // the turn reaches the mix
    std::vector<float> turned = render(0.2f);
    EXPECT_GT(energy(turned, 1), 100.0 * energy(turned, 0));
}

TEST_F(FmodLoopback, LoopsPlayUntilStoppedOrDroppedAndOneShotsToTheirEnd) {
    SharedPtr<SoundChannel> endless = channel();
    endless->setRepeat(true);
    endless->play();
    channel()->play();  // a one-shot, dropped with its source
    render(0.1f);
    endless = SharedPtr<SoundChannel>();
    // The one-shot plays to its end at 0.2 s, and nothing after it.
    std::vector<float> out = render(0.3f);
    EXPECT_GT(energy(out, 0, 0, kRate / 20), 1.0);
    EXPECT_EQ(energy(out, 0, kRate / 10), 0.0);

    SharedPtr<SoundChannel> looping = channel("tone.wav", false), once = channel("tone.wav", false);
    looping->setRepeat(true);
    ASSERT_TRUE(looping->play() && once->play());
    out = render(0.6f);
    EXPECT_GT(energy(out, 0, kRate / 2), 100.0);  // past the tone's length
    EXPECT_TRUE(looping->isPlaying());
    EXPECT_FALSE(once->isPlaying());
    EXPECT_TRUE(looping->stop());
    EXPECT_EQ(energy(render(0.1f), 0), 0.0);
    EXPECT_TRUE(looping->play());  // again from the start
    EXPECT_GT(energy(render(0.1f), 0), 100.0);
    EXPECT_TRUE(log.mLines.empty());
}

TEST_F(FmodLoopback, VoicesPastTheSourceLimitFailCleanlyAndTheRestPlay) {
    SharedPtr<Velun::SoundSource> source = open();
    std::vector<SharedPtr<SoundChannel>> channels;
    int played = 0;
    for (int i = 0; i < 300; ++i) {
        channels.push_back(engine.createChannel(source));
        played += channels.back()->play() ? 1 : 0;
    }
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
                   {"long.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1e-4},
                   {"long.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.05}};
    std::vector<float> signal = FmodTest::clicks(480, 1.5f), sweep = FmodTest::tone(300, 1.5f, 0.3f);
    for (size_t i = 0; i < signal.size(); ++i)
        signal[i] += sweep[i];
    for (const auto& format : formats) {
        SCOPED_TRACE(format.name);
        ASSERT_TRUE(FmodTest::writeSound(dir.file(format.name), signal, 1, format.format));
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

}  // namespace
