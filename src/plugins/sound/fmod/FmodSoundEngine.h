#pragma once

#include <cstdint>

#include "foundation/SharedPtr.h"
#include "plugins/sound/fmod/layer/fmod.hpp"
#include "sound/SoundEngine.h"

namespace Velun {

// The sound engine over the FMOD system: streamed sources, positional or played at
// the listener, and channels that can be restarted. Errors go to the log channel
// "plugins.sound.fmod".
class FmodSoundEngine : public SoundEngine {
public:
    FmodSoundEngine();
    // Shuts the system down if that has not been done.
    ~FmodSoundEngine() override;

    bool isInitialized() const override { return mInitialized; }
    // Opens the default output; false, with nothing left behind, where there is none.
    bool initialize() override;
    // Ends the system; sources and channels still held from then on answer false.
    bool shutdown() override;

    bool update(std::int64_t timestamp) override;
    // Positional sources are placed in the world, the others play at the listener.
    Dorvan::SharedPtr<SoundSource> createSoundSource(const NameMapper::ResourceInfo& info,
                                                     bool positional) const override;
    Dorvan::SharedPtr<SoundChannel> createChannel(Dorvan::SharedPtr<SoundSource> source) const override;
    // Forward and up turn the listener; both are left out if either is zero or they
    // are parallel.
    void updateListenerAttributes(const Dorvan::TVector<float, 3>& position,
                                  const Dorvan::TVector<float, 3>& velocity,
                                  const Dorvan::TVector<float, 3>& forward,
                                  const Dorvan::TVector<float, 3>& up, unsigned int listener) override;

    // Starts on OpenAL Soft's loopback device instead of the default output, rendering
    // into memory through renderLoopback: for tests and offline rendering.
    bool initializeLoopback(int rate);
    bool renderLoopback(float* stereoFrames, int frames);

private:
    FmodSoundEngine(const FmodSoundEngine&) = delete;
    FmodSoundEngine& operator=(const FmodSoundEngine&) = delete;

    bool start(FMOD_RESULT result);
    void logError(FMOD_RESULT result) const;

    bool mInitialized;
    FMOD::System* mSystem;
    // Shared with every source and channel made; cleared when the system ends.
    Dorvan::SharedPtr<bool> mSystemAlive;
};

}  // namespace Velun
