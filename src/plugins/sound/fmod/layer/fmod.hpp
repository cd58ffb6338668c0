#pragma once

// The part of the FMOD Ex C++ interface that Velun's FMOD engine calls, with the same
// names, signatures and constant values, over OpenAL Soft and libsndfile. Only the
// FMOD engine includes it; the real library could take its place at build time.

typedef int FMOD_RESULT;
typedef unsigned int FMOD_MODE;
typedef unsigned int FMOD_INITFLAGS;
typedef int FMOD_CHANNELINDEX;

// Result codes; FMOD_ErrorString (fmod_errors.h) gives their texts.
enum {
    FMOD_OK = 0,
    FMOD_ERR_CHANNEL_ALLOC = 1,  // no voice free
    FMOD_ERR_CHANNEL_STOLEN = 2,
    FMOD_ERR_FILE_BAD = 5,
    FMOD_ERR_FILE_NOTFOUND = 8,
    FMOD_ERR_FORMAT = 10,
    FMOD_ERR_INITIALIZED = 20,
    FMOD_ERR_INVALID_HANDLE = 25,
    FMOD_ERR_INVALID_PARAM = 26,
    FMOD_ERR_MEMORY = 33,
    FMOD_ERR_NEEDS3D = 37,
    FMOD_ERR_OUTPUT_INIT = 48,
    FMOD_ERR_UNINITIALIZED = 64,
    FMOD_RESULT_LAST = 68
};

const FMOD_MODE FMOD_DEFAULT = 0x0;
const FMOD_MODE FMOD_LOOP_OFF = 0x1;
const FMOD_MODE FMOD_LOOP_NORMAL = 0x2;
const FMOD_MODE FMOD_2D = 0x8;
const FMOD_MODE FMOD_3D = 0x10;
const FMOD_MODE FMOD_SOFTWARE = 0x40;
const FMOD_MODE FMOD_CREATESTREAM = 0x80;
const FMOD_MODE FMOD_3D_HEADRELATIVE = 0x40000;

const FMOD_INITFLAGS FMOD_INIT_NORMAL = 0x0;
const FMOD_INITFLAGS FMOD_INIT_3D_RIGHTHANDED = 0x2;

const FMOD_CHANNELINDEX FMOD_CHANNEL_FREE = -1;
const FMOD_CHANNELINDEX FMOD_CHANNEL_REUSE = -2;

struct FMOD_VECTOR {
    float x;
    float y;
    float z;
};

struct FMOD_CREATESOUNDEXINFO;

namespace FMOD {

class System;

// A sound opened by System::createSound; streamed from its file by each voice.
class Sound {
public:
    // Frees the sound; its file and decoders close once no voice plays it any more.
    FMOD_RESULT release();

protected:
    Sound() {}
};

// A handle to one voice, not an object: it carries the voice's slot and generation,
// so a handle to a voice that has ended fails with FMOD_ERR_INVALID_HANDLE, also once
// a newer voice plays in the same slot.
class Channel {
public:
    // A paused voice counts as playing.
    FMOD_RESULT isPlaying(bool* isplaying);
    FMOD_RESULT stop();
    FMOD_RESULT setPaused(bool paused);
    FMOD_RESULT getPaused(bool* paused);
    FMOD_RESULT setVolume(float volume);
    FMOD_RESULT setMute(bool mute);
    // How often the sound repeats after its first run; -1 is endless.
    FMOD_RESULT setLoopCount(int loopcount);
    // FMOD_ERR_NEEDS3D for a sound that was not opened with FMOD_3D.
    FMOD_RESULT set3DAttributes(const FMOD_VECTOR* pos, const FMOD_VECTOR* vel);

private:
    Channel() = delete;
};

class System {
public:
    // Opens the default output device; FMOD_ERR_OUTPUT_INIT where there is none.
    FMOD_RESULT init(int maxchannels, FMOD_INITFLAGS flags, void* extradriverdata);
    // Ends every voice, frees every sound, closes the output and the system object.
    FMOD_RESULT release();
    // Refills the streams and ends the voices whose sound has run out.
    FMOD_RESULT update();
    // Null vectors leave that attribute as it is; forward and up come together.
    FMOD_RESULT set3DListenerAttributes(int listener, const FMOD_VECTOR* pos, const FMOD_VECTOR* vel,
                                        const FMOD_VECTOR* forward, const FMOD_VECTOR* up);
    FMOD_RESULT createSound(const char* name_or_data, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO* exinfo,
                            Sound** sound);
    // With FMOD_CHANNEL_REUSE and a live handle in *channel, the new voice takes that
    // voice's place; otherwise it takes a free slot.
    FMOD_RESULT playSound(FMOD_CHANNELINDEX channelid, Sound* sound, bool paused, Channel** channel);

    // Additions of this layer: init on OpenAL Soft's loopback device, which renders
    // into memory at `rate` frames per second instead of playing, and the rendering
    // of the next `frames` frames of interleaved stereo floats.
    FMOD_RESULT initLoopback(int maxchannels, FMOD_INITFLAGS flags, int rate);
    FMOD_RESULT renderLoopback(float* buffer, int frames);

protected:
    System() {}
};

}  // namespace FMOD

FMOD_RESULT FMOD_System_Create(FMOD::System** system);
