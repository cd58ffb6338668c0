// The FMOD engine over OpenAL Soft's loopback device: mixing positional voices,
// one SoundManager update with many streamed voices, and play of a cached source.
#include <benchmark/benchmark.h>

#include <memory>

#include "core/FileNameMapper.h"
#include "core/ResourceManager.h"
#include "core/VelunCore.h"
#include "fmod/TestSounds.h"
#include "plugins/sound/fmod/FmodSoundEngine.h"
#include "sound/SoundManager.h"

using Dorvan::SharedPtr;
using Velun::SoundChannel;
typedef Dorvan::TVector<float, 3> Vec3;

namespace {

const int kStep = FmodTest::kRate / 50;  // 20 ms, a frame of a game at 50 fps

// A started engine whose SoundManager runs the FMOD engine on the loopback device,
// with a two-second tone in a temporary folder as "tone.wav".
struct LoopbackSound {
    LoopbackSound() {
        Velun::VelunCore::getSingleton().startup();
        FmodTest::writeSound(dir.file("tone.wav"), FmodTest::tone(440, 2.0f), 1,
                             SF_FORMAT_WAV | SF_FORMAT_PCM_16);
        engine.initializeLoopback(FmodTest::kRate);
        sounds().setSoundNameMapper(SharedPtr<Velun::NameMapper>(new Velun::FileNameMapper(dir.file(""))));
        sounds().registerSoundEngine(engine);
    }
    ~LoopbackSound() {
        channels.clear();
        sounds().unregisterSoundEngine(engine);
        engine.shutdown();
        Velun::VelunCore::getSingleton().shutdown();
    }
    Velun::SoundManager& sounds() {
        return Velun::VelunCore::getSingleton().getResourceManager().getSoundManager();
    }
    void startVoices(int count) {
        for (int i = 0; i < count; ++i) {
            channels.push_back(sounds().createChannel(sounds().getSoundSource("tone.wav", true, true)));
            channels.back()->setRepeat(true);
            channels.back()->set3DAttributes(Vec3(float(i % 8) - 4.0f, 0.0f, -float(i / 8) - 1.0f),
                                             Vec3(0, 0, 0));
            channels.back()->play();
        }
    }
    void runManager() {
        for (Velun::Process* process : *sounds().getProcessList())
            process->run(0);
    }

    FmodTest::TempDir dir;
    Velun::FmodSoundEngine engine;
    std::vector<SharedPtr<SoundChannel>> channels;
    std::vector<float> mix = std::vector<float>(2 * kStep);
};

void BM_MixOneSecondOf32PositionalVoices(benchmark::State& state) {
    LoopbackSound sound;
    sound.startVoices(32);
    for (auto _ : state) {
        for (int step = 0; step < 50; ++step) {
            sound.engine.renderLoopback(sound.mix.data(), kStep);
            sound.runManager();
        }
    }
}
BENCHMARK(BM_MixOneSecondOf32PositionalVoices)->Unit(benchmark::kMillisecond);

void BM_ManagerUpdateWith64StreamedVoices(benchmark::State& state) {
    LoopbackSound sound;
    sound.startVoices(64);
    for (auto _ : state) {
        state.PauseTiming();
        sound.engine.renderLoopback(sound.mix.data(), kStep);
        state.ResumeTiming();
        sound.runManager();
    }
}
BENCHMARK(BM_ManagerUpdateWith64StreamedVoices)->Unit(benchmark::kMicrosecond);

void BM_PlayCachedSource(benchmark::State& state) {
    LoopbackSound sound;
    sound.sounds().getSoundSource("tone.wav", true, true);
    for (auto _ : state) {
        SharedPtr<SoundChannel> channel =
            sound.sounds().createChannel(sound.sounds().getSoundSource("tone.wav", true, true));
        channel->play();
        state.PauseTiming();
        channel->stop();
        channel = SharedPtr<SoundChannel>();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_PlayCachedSource)->Unit(benchmark::kMicrosecond);

}  // namespace
