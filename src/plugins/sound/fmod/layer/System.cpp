#define AL_ALEXT_PROTOTYPES
#include <AL/alext.h>

#include <algorithm>

#include "plugins/sound/fmod/layer/LayerSystem.h"

namespace FMOD {
namespace Layer {

namespace {

// Live systems by index; a channel handle names its system by this index.
const int kMaxSystems = 15;
SystemData* gSystems[kMaxSystems] = {};

// Handle bits: 4 low bits zero, the system index + 1 in the next 4, the slot + 1 in
// the next 12, the generation in the rest.
const std::uintptr_t kGenerationMask = ~std::uintptr_t(0) >> 20;
const int kMaxSlots = 0xfff;

ALenum formatOf(int channels) { return channels == 1 ? AL_FORMAT_MONO16 : AL_FORMAT_STEREO16; }

}  // namespace

Voice* SystemData::findVoice(const Channel* handle, SystemData** system) {
    std::uintptr_t bits = reinterpret_cast<std::uintptr_t>(handle);
    int index = static_cast<int>((bits >> 4) & 0xf) - 1;
    int slot = static_cast<int>((bits >> 8) & 0xfff) - 1;
    if (index < 0 || slot < 0 || !gSystems[index])
        return nullptr;
    SystemData* owner = gSystems[index];
    if (slot >= static_cast<int>(owner->mVoices.size()))
        return nullptr;
    Voice& voice = owner->mVoices[slot];
    if (!voice.mActive || (voice.mGeneration & kGenerationMask) != (bits >> 20))
        return nullptr;
    owner->bind();
    *system = owner;
    return &voice;
}

Channel* SystemData::handleOf(int slot) const {
    std::uintptr_t generation = mVoices[slot].mGeneration & kGenerationMask;
    std::uintptr_t bits =
        (generation << 20) | (std::uintptr_t(slot + 1) << 8) | (std::uintptr_t(mIndex + 1) << 4);
    return reinterpret_cast<Channel*>(bits);
}

void SystemData::bind() const {
    if (mContext && alcGetCurrentContext() != mContext)
        alcMakeContextCurrent(mContext);
}

FMOD_RESULT SystemData::open(ALCdevice* device, const ALCint* attributes, int maxchannels,
                             FMOD_INITFLAGS flags) {
    if (!device)
        return FMOD_ERR_OUTPUT_INIT;
    ALCcontext* context = alcCreateContext(device, attributes);
    if (!context) {
        alcCloseDevice(device);
        return FMOD_ERR_OUTPUT_INIT;
    }
    mDevice = device;
    mContext = context;
    bind();
    mZSign = (flags & FMOD_INIT_3D_RIGHTHANDED) ? 1.0f : -1.0f;
    mVoices.resize(static_cast<size_t>(maxchannels));
    return FMOD_OK;
}

FMOD_RESULT SystemData::start(Voice& voice) {
    if (voice.mSource)
        return FMOD_OK;
    alGetError();
    ALuint source = 0;
    if (!mFreeSources.empty()) {
        source = mFreeSources.back();
        mFreeSources.pop_back();
    } else {
        alGenSources(1, &source);
        if (alGetError() != AL_NO_ERROR)
            return FMOD_ERR_CHANNEL_ALLOC;
    }
    alGenBuffers(kStreamBuffers, voice.mBuffers);
    if (alGetError() != AL_NO_ERROR) {
        mFreeSources.push_back(source);
        return FMOD_ERR_MEMORY;
    }
    voice.mSource = source;
    const bool relative = !voice.mSound->is3D() || (voice.mSound->mMode & FMOD_3D_HEADRELATIVE);
    alSourcei(source, AL_SOURCE_RELATIVE, relative ? AL_TRUE : AL_FALSE);
    applyPosition(voice);
    applyGain(voice);
    std::vector<short> samples(static_cast<size_t>(voice.mStream->getRate() / 8) *
                               voice.mStream->getChannels());
    for (ALuint buffer : voice.mBuffers) {
        int frames = voice.mStream->read(samples.data(), voice.mStream->getRate() / 8, voice.mLoopsLeft);
        if (frames == 0) {
            voice.mStreamDone = true;
            break;
        }
        alBufferData(buffer, formatOf(voice.mStream->getChannels()), samples.data(),
                     frames * voice.mStream->getChannels() * static_cast<int>(sizeof(short)),
                     voice.mStream->getRate());
        alSourceQueueBuffers(source, 1, &buffer);
    }
    alSourcePlay(source);
    return FMOD_OK;
}

void SystemData::refill(Voice& voice) {
    ALint processed = 0;
    alGetSourcei(voice.mSource, AL_BUFFERS_PROCESSED, &processed);
    const int channels = voice.mStream->getChannels();
    const int frames = voice.mStream->getRate() / 8;
    std::vector<short> samples;
    while (processed-- > 0) {
        ALuint buffer = 0;
        alSourceUnqueueBuffers(voice.mSource, 1, &buffer);
        if (voice.mStreamDone)
            continue;
        samples.resize(static_cast<size_t>(frames) * channels);
        int got = voice.mStream->read(samples.data(), frames, voice.mLoopsLeft);
        if (got == 0) {
            voice.mStreamDone = true;
            continue;
        }
        alBufferData(buffer, formatOf(channels), samples.data(),
                     got * channels * static_cast<int>(sizeof(short)), voice.mStream->getRate());
        alSourceQueueBuffers(voice.mSource, 1, &buffer);
    }
}

void SystemData::end(Voice& voice) {
    if (voice.mSource) {
        alSourceStop(voice.mSource);
        alSourcei(voice.mSource, AL_BUFFER, 0);
        mFreeSources.push_back(voice.mSource);
        alDeleteBuffers(kStreamBuffers, voice.mBuffers);
    }
    delete voice.mStream;
    SoundData* sound = voice.mSound;
    unsigned int generation = voice.mGeneration + 1;
    voice = Voice();
    voice.mGeneration = generation;
    if (--sound->mVoices == 0 && sound->mReleased)
        forget(sound);
}

void SystemData::applyGain(const Voice& voice) const {
    if (voice.mSource)
        alSourcef(voice.mSource, AL_GAIN, voice.mMute ? 0.0f : voice.mVolume);
}

void SystemData::applyPosition(const Voice& voice) const {
    if (!voice.mSource)
        return;
    // A sound without FMOD_3D plays at the listener.
    const FMOD_VECTOR& p = voice.mSound->is3D() ? voice.mPosition : FMOD_VECTOR{0.0f, 0.0f, 0.0f};
    alSource3f(voice.mSource, AL_POSITION, p.x, p.y, p.z * mZSign);
}

void SystemData::forget(SoundData* sound) {
    mSounds.erase(std::remove(mSounds.begin(), mSounds.end(), sound), mSounds.end());
    delete sound;
}

}  // namespace Layer

using Layer::SoundData;
using Layer::SystemData;
using Layer::Voice;

FMOD_RESULT System::init(int maxchannels, FMOD_INITFLAGS flags, void*) {
    SystemData& self = SystemData::of(this);
    if (self.mDevice)
        return FMOD_ERR_INITIALIZED;
    if (maxchannels < 1 || maxchannels > Layer::kMaxSlots)
        return FMOD_ERR_INVALID_PARAM;
    return self.open(alcOpenDevice(nullptr), nullptr, maxchannels, flags);
}

FMOD_RESULT System::initLoopback(int maxchannels, FMOD_INITFLAGS flags, int rate) {
    SystemData& self = SystemData::of(this);
    if (self.mDevice)
        return FMOD_ERR_INITIALIZED;
    if (maxchannels < 1 || maxchannels > Layer::kMaxSlots || rate <= 0)
        return FMOD_ERR_INVALID_PARAM;
    const ALCint attributes[] = {ALC_FORMAT_CHANNELS_SOFT,
                                 ALC_STEREO_SOFT,
                                 ALC_FORMAT_TYPE_SOFT,
                                 ALC_FLOAT_SOFT,
                                 ALC_FREQUENCY,
                                 rate,
                                 ALC_HRTF_SOFT,
                                 ALC_FALSE,
                                 0};
    self.mLoopback = true;
    return self.open(alcLoopbackOpenDeviceSOFT(nullptr), attributes, maxchannels, flags);
}

FMOD_RESULT System::renderLoopback(float* buffer, int frames) {
    SystemData& self = SystemData::of(this);
    if (!self.mDevice || !self.mLoopback)
        return FMOD_ERR_UNINITIALIZED;
    alcRenderSamplesSOFT(self.mDevice, buffer, frames);
    return FMOD_OK;
}

FMOD_RESULT System::release() {
    SystemData* self = &SystemData::of(this);
    self->bind();
    for (Voice& voice : self->mVoices) {
        if (voice.mActive)
            self->end(voice);
    }
    for (SoundData* sound : self->mSounds)
        delete sound;
    if (!self->mFreeSources.empty())
        alDeleteSources(static_cast<ALsizei>(self->mFreeSources.size()), self->mFreeSources.data());
    if (self->mContext) {
        alcMakeContextCurrent(nullptr);
        alcDestroyContext(self->mContext);
        alcCloseDevice(self->mDevice);
    }
    Layer::gSystems[self->mIndex] = nullptr;
    delete self;
    return FMOD_OK;
}

FMOD_RESULT System::update() {
    SystemData& self = SystemData::of(this);
    if (!self.mDevice)
        return FMOD_ERR_UNINITIALIZED;
    self.bind();
    for (Voice& voice : self.mVoices) {
        if (!voice.mActive || !voice.mSource || voice.mPaused)
            continue;
        self.refill(voice);
        ALint state = 0, queued = 0;
        alGetSourcei(voice.mSource, AL_SOURCE_STATE, &state);
        alGetSourcei(voice.mSource, AL_BUFFERS_QUEUED, &queued);
        if (state == AL_PLAYING)
            continue;
        if (queued == 0)
            self.end(voice);
        else
            alSourcePlay(voice.mSource);  // ran dry before this update: go on
    }
    return FMOD_OK;
}

FMOD_RESULT System::set3DListenerAttributes(int listener, const FMOD_VECTOR* pos, const FMOD_VECTOR* vel,
                                            const FMOD_VECTOR* forward, const FMOD_VECTOR* up) {
    SystemData& self = SystemData::of(this);
    if (!self.mDevice)
        return FMOD_ERR_UNINITIALIZED;
    if (listener != 0 || (!forward) != (!up))
        return FMOD_ERR_INVALID_PARAM;
    self.bind();
    const float z = self.mZSign;
    if (pos)
        alListener3f(AL_POSITION, pos->x, pos->y, pos->z * z);
    if (vel)
        alListener3f(AL_VELOCITY, vel->x, vel->y, vel->z * z);
    if (forward) {
        const ALfloat orientation[] = {forward->x, forward->y, forward->z * z, up->x, up->y, up->z * z};
        alListenerfv(AL_ORIENTATION, orientation);
    }
    return FMOD_OK;
}

FMOD_RESULT System::createSound(const char* name, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO*, Sound** sound) {
    SystemData& self = SystemData::of(this);
    if (!sound || !name)
        return FMOD_ERR_INVALID_PARAM;
    *sound = nullptr;
    FMOD_RESULT result = FMOD_OK;
    Layer::Stream* probe = Layer::Stream::open(name, false, result);
    if (!probe)
        return result;
    SoundData* data = new SoundData();
    data->mSystem = &self;
    data->mPath = name;
    data->mMode = mode;
    data->mFileChannels = probe->getFileChannels();
    data->mVoices = 0;
    data->mReleased = false;
    delete probe;
    self.mSounds.push_back(data);
    *sound = data;
    return FMOD_OK;
}

FMOD_RESULT System::playSound(FMOD_CHANNELINDEX channelid, Sound* sound, bool paused, Channel** channel) {
    SystemData& self = SystemData::of(this);
    if (!self.mDevice)
        return FMOD_ERR_UNINITIALIZED;
    if (!sound || !channel || (channelid != FMOD_CHANNEL_FREE && channelid != FMOD_CHANNEL_REUSE))
        return FMOD_ERR_INVALID_PARAM;
    self.bind();
    SoundData* data = static_cast<SoundData*>(sound);
    int slot = -1;
    SystemData* owner = nullptr;
    Voice* reused = channelid == FMOD_CHANNEL_REUSE ? SystemData::findVoice(*channel, &owner) : nullptr;
    if (reused && owner == &self) {
        slot = static_cast<int>(reused - self.mVoices.data());
        self.end(*reused);
    } else {
        for (size_t i = 0; i < self.mVoices.size() && slot < 0; ++i) {
            if (!self.mVoices[i].mActive)
                slot = static_cast<int>(i);
        }
    }
    if (slot < 0)
        return FMOD_ERR_CHANNEL_ALLOC;
    FMOD_RESULT result = FMOD_OK;
    Layer::Stream* stream = Layer::Stream::open(data->mPath, data->is3D(), result);
    if (!stream)
        return result;
    Voice& voice = self.mVoices[slot];
    voice.mActive = true;
    voice.mSound = data;
    voice.mStream = stream;
    voice.mPaused = paused;
    voice.mLoopsLeft = data->loops() ? -1 : 0;
    ++data->mVoices;
    if (!paused && (result = self.start(voice)) != FMOD_OK) {
        self.end(voice);
        return result;
    }
    *channel = self.handleOf(slot);
    return FMOD_OK;
}

}  // namespace FMOD

FMOD_RESULT FMOD_System_Create(FMOD::System** system) {
    if (!system)
        return FMOD_ERR_INVALID_PARAM;
    *system = nullptr;
    for (int i = 0; i < FMOD::Layer::kMaxSystems; ++i) {
        if (FMOD::Layer::gSystems[i])
            continue;
        FMOD::Layer::SystemData* data = new FMOD::Layer::SystemData();
        data->mIndex = i;
        FMOD::Layer::gSystems[i] = data;
        *system = data;
        return FMOD_OK;
    }
    return FMOD_ERR_MEMORY;
}
