#include "plugins/sound/fmod/FmodChannel.h"

#include "core/VelunCore.h"
#include "plugins/sound/fmod/FmodError.h"
#include "plugins/sound/fmod/FmodSound.h"

namespace Velun {

namespace {
FMOD_VECTOR toFmod(const Dorvan::TVector<float, 3>& v) { return FMOD_VECTOR{v[0], v[1], v[2]}; }
}  // namespace

FmodChannel::FmodChannel(FMOD::System& system, const Dorvan::SharedPtr<bool>& systemAlive)
    : mChannel(nullptr), mSystem(&system), mFmodSound(nullptr), mVolume(1.0f), mLoopCount(0), mPaused(true),
      mMuted(false), mPosition(0.0f, 0.0f, 0.0f), mVelocity(0.0f, 0.0f, 0.0f), mSystemAlive(systemAlive) {}

FmodChannel::FmodChannel(FMOD::System& system, Dorvan::SharedPtr<SoundSource> source,
                         const Dorvan::SharedPtr<bool>& systemAlive)
    : FmodChannel(system, systemAlive) {
    updateChannel(source);
}

FmodChannel::~FmodChannel() {
    bool paused = false;
    if (mChannel && isAlive() && mChannel->getPaused(&paused) == FMOD_OK && (paused || mLoopCount == -1))
        mChannel->stop();
    mFmodSound = nullptr;
}

bool FmodChannel::updateChannel(Dorvan::SharedPtr<SoundSource> source) {
    FmodSound* sound = dynamic_cast<FmodSound*>(source.get());
    if (!sound || !isAlive())
        return false;
    if (mFmodSound) {
        if (isPlaying())
            stop();
        mFmodSound = nullptr;
        mSoundSource = Dorvan::SharedPtr<SoundSource>();
    }
    // The sound is kept even if no voice starts, so that a later play tries again.
    mFmodSound = sound;
    mSoundSource = source;
    FMOD_CHANNELINDEX index = mChannel ? FMOD_CHANNEL_REUSE : FMOD_CHANNEL_FREE;
    FMOD_RESULT result = mSystem->playSound(index, &sound->getFmodSound(), mPaused, &mChannel);
    if (result != FMOD_OK) {
        mChannel = nullptr;
        logError("creating new channel", result);
        return false;
    }
    applyState();
    return true;
}

void FmodChannel::applyState() {
    FMOD_RESULT result = mChannel->setVolume(mVolume);
    if (result != FMOD_OK)
        logError("setting volume on update", result);
    result = mChannel->setMute(mMuted);
    if (result != FMOD_OK)
        logError("setting mute on update", result);
    result = mChannel->setLoopCount(mLoopCount);
    if (result != FMOD_OK)
        logError("setting loopcount on update", result);
    // Refused for sounds not placed in the world; nothing to tell.
    const FMOD_VECTOR position = toFmod(mPosition), velocity = toFmod(mVelocity);
    mChannel->set3DAttributes(&position, &velocity);
}

bool FmodChannel::setSoundSource(Dorvan::SharedPtr<SoundSource> source) { return updateChannel(source); }

bool FmodChannel::play() {
    if (!isAlive())
        return false;
    if (!mChannel && (!mSoundSource || !updateChannel(mSoundSource)))
        return false;
    if (isPlaying() && isPaused())
        return check(mChannel->setPaused(false), "playing sound");
    // Ended, or running unpaused: start it anew.
    if (!updateChannel(mSoundSource))
        return false;
    return check(mChannel->setPaused(false), "playing reloaded sound");
}

bool FmodChannel::stop() {
    if (!mChannel || !isAlive())
        return false;
    if (!check(mChannel->stop(), "stopping"))
        return false;
    mChannel = nullptr;
    return true;
}

bool FmodChannel::isPlaying() const {
    bool playing = false;
    if (!mChannel || !isAlive())
        return false;
    return check(mChannel->isPlaying(&playing), nullptr) && playing;
}

bool FmodChannel::setVolume(float volume) {
    mVolume = volume;
    if (!isAlive())
        return false;
    return !mChannel || check(mChannel->setVolume(volume), "setting volume");
}

bool FmodChannel::setPaused(bool paused) {
    mPaused = paused;
    if (!isAlive())
        return false;
    return !mChannel || check(mChannel->setPaused(paused), "setting paused");
}

bool FmodChannel::setMute(bool mute) {
    mMuted = mute;
    if (!isAlive())
        return false;
    return !mChannel || check(mChannel->setMute(mute), "setting mute");
}

bool FmodChannel::setLoopCount(int count) {
    mLoopCount = count;
    if (!isAlive())
        return false;
    return !mChannel || check(mChannel->setLoopCount(count), "setting loopcount");
}

bool FmodChannel::setRepeat(bool repeat) { return setLoopCount(repeat ? -1 : 0); }

bool FmodChannel::set3DAttributes(const Dorvan::TVector<float, 3>& position,
                                  const Dorvan::TVector<float, 3>& velocity) {
    mPosition = position;
    mVelocity = velocity;
    if (!isAlive())
        return false;
    if (!mChannel)
        return true;
    const FMOD_VECTOR fmodPosition = toFmod(position), fmodVelocity = toFmod(velocity);
    return check(mChannel->set3DAttributes(&fmodPosition, &fmodVelocity), nullptr);
}

bool FmodChannel::isMuted() const { return mMuted; }

bool FmodChannel::isPaused() const { return mPaused; }

void FmodChannel::cleanup() const { mChannel = nullptr; }

bool FmodChannel::check(FMOD_RESULT result, const char* action) const {
    if (result == FMOD_OK)
        return true;
    if (action)
        logError(action, result);
    if (isFmodHandleGone(result))
        cleanup();
    return false;
}

void FmodChannel::logError(const std::string& action, FMOD_RESULT result) const {
    VelunCore::getLogger("plugins.sound.fmod")
        ->error("FMOD Error while " + action + ": " + fmodErrorText(result));
}

}  // namespace Velun
