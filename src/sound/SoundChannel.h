#pragma once

#include "foundation/SharedPtr.h"
#include "scene/TVector.h"
#include "sound/SoundSource.h"
#include "velun_export.h"

namespace Velun {

// One voice playing a SoundSource. A channel keeps what was set on it (volume,
// repeat, pause, mute, place) and can be played again after its sound has ended.
// Every operation returns true on success.
class VELUN_EXPORT SoundChannel {
public:
    virtual bool setSoundSource(Dorvan::SharedPtr<SoundSource> source) = 0;
    // 0 is silent, 1 full volume.
    virtual bool setVolume(float volume) = 0;
    // Starts the sound, or resumes it where it is paused.
    virtual bool play() = 0;
    virtual bool stop() = 0;
    virtual bool setPaused(bool paused) = 0;
    // Repeats endlessly, or plays once.
    virtual bool setRepeat(bool repeat) = 0;
    virtual bool setMute(bool mute) = 0;
    // How often the sound repeats after its first run; -1 is endless.
    virtual bool setLoopCount(int count) = 0;
    // World position and velocity; a Sound node sets them for the channels it holds.
    virtual bool set3DAttributes(const Dorvan::TVector<float, 3>& position,
                                 const Dorvan::TVector<float, 3>& velocity) = 0;
    virtual bool isPlaying() const = 0;
    virtual bool isMuted() const = 0;
    virtual bool isPaused() const = 0;
    virtual ~SoundChannel();
};

}  // namespace Velun
