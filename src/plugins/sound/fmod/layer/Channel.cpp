#include "plugins/sound/fmod/layer/LayerSystem.h"

namespace FMOD {

using Layer::SystemData;
using Layer::Voice;

FMOD_RESULT Channel::isPlaying(bool* isplaying) {
    SystemData* system = nullptr;
    if (!SystemData::findVoice(this, &system))
        return FMOD_ERR_INVALID_HANDLE;
    if (isplaying)
        *isplaying = true;
    return FMOD_OK;
}

FMOD_RESULT Channel::stop() {
    SystemData* system = nullptr;
    Voice* voice = SystemData::findVoice(this, &system);
    if (!voice)
        return FMOD_ERR_INVALID_HANDLE;
    system->end(*voice);
    return FMOD_OK;
}

FMOD_RESULT Channel::setPaused(bool paused) {
    SystemData* system = nullptr;
    Voice* voice = SystemData::findVoice(this, &system);
    if (!voice)
        return FMOD_ERR_INVALID_HANDLE;
    if (!paused && !voice->mSource) {
        FMOD_RESULT result = system->start(*voice);
        if (result != FMOD_OK)
            return result;
    } else if (voice->mSource) {
        if (paused)
            alSourcePause(voice->mSource);
        else
            alSourcePlay(voice->mSource);
    }
    voice->mPaused = paused;
    return FMOD_OK;
}

FMOD_RESULT Channel::getPaused(bool* paused) {
    SystemData* system = nullptr;
    Voice* voice = SystemData::findVoice(this, &system);
    if (!voice)
        return FMOD_ERR_INVALID_HANDLE;
    if (paused)
        *paused = voice->mPaused;
    return FMOD_OK;
}

FMOD_RESULT Channel::setVolume(float volume) {
    SystemData* system = nullptr;
    Voice* voice = SystemData::findVoice(this, &system);
    if (!voice)
        return FMOD_ERR_INVALID_HANDLE;
    voice->mVolume = volume < 0.0f ? 0.0f : (volume > 1.0f ? 1.0f : volume);
    system->applyGain(*voice);
    return FMOD_OK;
}

FMOD_RESULT Channel::setMute(bool mute) {
    SystemData* system = nullptr;
    Voice* voice = SystemData::findVoice(this, &system);
    if (!voice)
        return FMOD_ERR_INVALID_HANDLE;
    voice->mMute = mute;
    system->applyGain(*voice);
    return FMOD_OK;
}

FMOD_RESULT Channel::setLoopCount(int loopcount) {
    SystemData* system = nullptr;
    Voice* voice = SystemData::findVoice(this, &system);
    if (!voice)
        return FMOD_ERR_INVALID_HANDLE;
    if (loopcount < -1)
        return FMOD_ERR_INVALID_PARAM;
    // Only sounds opened to loop repeat.
    voice->mLoopsLeft = voice->mSound->loops() ? loopcount : 0;
    return FMOD_OK;
}

FMOD_RESULT Channel::set3DAttributes(const FMOD_VECTOR* pos, const FMOD_VECTOR*) {
    SystemData* system = nullptr;
    Voice* voice = SystemData::findVoice(this, &system);
    if (!voice)
        return FMOD_ERR_INVALID_HANDLE;
    if (!voice->mSound->is3D())
        return FMOD_ERR_NEEDS3D;
    if (pos) {
        voice->mPosition = *pos;
        system->applyPosition(*voice);
    }
    return FMOD_OK;
}

}  // namespace FMOD
