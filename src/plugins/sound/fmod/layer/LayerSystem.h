#pragma once

#include <AL/al.h>
#include <AL/alc.h>

#include <cstdint>
#include <string>
#include <vector>

#include "plugins/sound/fmod/layer/Stream.h"
#include "plugins/sound/fmod/layer/fmod.hpp"

namespace FMOD {
namespace Layer {

struct SystemData;

struct SoundData : public Sound {
    SystemData* mSystem;
    std::string mPath;
    FMOD_MODE mMode;
    int mFileChannels;
    int mVoices;  // voices now playing it
    bool mReleased;

    bool is3D() const { return (mMode & FMOD_3D) != 0; }
    bool loops() const { return (mMode & FMOD_LOOP_NORMAL) != 0; }
};

// Queued stream buffers per voice; each holds an eighth of a second, so more than
// half a second stays queued between two updates.
const int kStreamBuffers = 6;

struct Voice {
    unsigned int mGeneration = 0;
    bool mActive = false;
    SoundData* mSound = nullptr;
    Stream* mStream = nullptr;
    bool mStreamDone = false;
    ALuint mSource = 0;  // taken when first unpaused
    ALuint mBuffers[kStreamBuffers] = {};
    bool mPaused = true;
    float mVolume = 1.0f;
    bool mMute = false;
    int mLoopsLeft = 0;
    FMOD_VECTOR mPosition = {0.0f, 0.0f, 0.0f};
};

struct SystemData : public System {
    int mIndex = -1;  // in the table of live systems, part of every channel handle
    ALCdevice* mDevice = nullptr;
    ALCcontext* mContext = nullptr;
    bool mLoopback = false;
    float mZSign = -1.0f;  // left-handed positions flip z unless 3D_RIGHTHANDED was given
    std::vector<Voice> mVoices;
    std::vector<ALuint> mFreeSources;
    std::vector<SoundData*> mSounds;

    static SystemData& of(System* system) { return *static_cast<SystemData*>(system); }
    // The voice a handle names, or null when the handle is stale or not one of ours.
    static Voice* findVoice(const Channel* handle, SystemData** system);
    Channel* handleOf(int slot) const;

    FMOD_RESULT open(ALCdevice* device, const ALCint* attributes, int maxchannels, FMOD_INITFLAGS flags);
    void bind() const;
    FMOD_RESULT start(Voice& voice);
    void refill(Voice& voice);
    void end(Voice& voice);
    void applyGain(const Voice& voice) const;
    void applyPosition(const Voice& voice) const;
    void forget(SoundData* sound);
};

}  // namespace Layer
}  // namespace FMOD
