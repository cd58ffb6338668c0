#pragma once

#include <string>

#include "foundation/SharedPtr.h"
#include "plugins/sound/fmod/layer/fmod.hpp"
#include "scene/TVector.h"
#include "sound/SoundChannel.h"

namespace Velun {

class FmodSound;

// A channel on the FMOD system. The library takes a voice's handle back when its
// sound ends, so the channel keeps the wanted state (volume, mute, loop count, pause,
// place) itself and builds a new voice from it whenever it needs one. A new channel
// holds a paused voice until play.
class FmodChannel : public SoundChannel {
public:
    // `systemAlive` is shared with the engine, which clears it when the system ends;
    // from then on operations return false and nothing calls into the library.
    FmodChannel(FMOD::System& system, const Dorvan::SharedPtr<bool>& systemAlive);
    FmodChannel(FMOD::System& system, Dorvan::SharedPtr<SoundSource> source,
                const Dorvan::SharedPtr<bool>& systemAlive);
    // Stops a voice that is paused or repeats endlessly; a finite one that plays
    // plays to its end.
    ~FmodChannel() override;

    // False for a source of another engine; the channel keeps its old one.
    bool setSoundSource(Dorvan::SharedPtr<SoundSource> source) override;
    bool setVolume(float volume) override;
    // Resumes a paused voice, and otherwise starts the sound anew from its beginning.
    bool play() override;
    bool stop() override;
    bool setPaused(bool paused) override;
    bool setRepeat(bool repeat) override;
    bool setMute(bool mute) override;
    bool setLoopCount(int count) override;
    bool set3DAttributes(const Dorvan::TVector<float, 3>& position,
                         const Dorvan::TVector<float, 3>& velocity) override;
    // False once the sound has ended; a paused voice counts as playing.
    bool isPlaying() const override;
    bool isMuted() const override;
    // What was last asked for with setPaused; play leaves it as it is.
    bool isPaused() const override;

private:
    FmodChannel(const FmodChannel&) = delete;
    FmodChannel& operator=(const FmodChannel&) = delete;

    bool updateChannel(Dorvan::SharedPtr<SoundSource> source);
    void applyState();
    void cleanup() const;
    // True for FMOD_OK; otherwise logs (with an action) and drops a handle the
    // library says is gone.
    bool check(FMOD_RESULT result, const char* action) const;
    void logError(const std::string& action, FMOD_RESULT result) const;
    bool isAlive() const { return *mSystemAlive; }

    mutable FMOD::Channel* mChannel;
    FMOD::System* mSystem;
    FmodSound* mFmodSound;
    Dorvan::SharedPtr<SoundSource> mSoundSource;
    float mVolume;
    int mLoopCount;
    bool mPaused;
    bool mMuted;
    Dorvan::TVector<float, 3> mPosition;
    Dorvan::TVector<float, 3> mVelocity;
    Dorvan::SharedPtr<bool> mSystemAlive;
};

}  // namespace Velun
