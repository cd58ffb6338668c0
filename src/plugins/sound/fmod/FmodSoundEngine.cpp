#include "plugins/sound/fmod/FmodSoundEngine.h"

#include <cmath>

#include "core/NativePath.h"
#include "core/VelunCore.h"
#include "plugins/sound/fmod/FmodChannel.h"
#include "plugins/sound/fmod/FmodError.h"
#include "plugins/sound/fmod/FmodSound.h"

namespace Velun {

namespace {

const int kMaxChannels = 1000;

// Unit length, or false for a vector too short to give a direction.
bool normalized(const Dorvan::TVector<float, 3>& v, FMOD_VECTOR& out) {
    float length = std::sqrt(v.dot(v));
    if (!(length > 1e-6f))
        return false;
    out = FMOD_VECTOR{v[0] / length, v[1] / length, v[2] / length};
    return true;
}

}  // namespace

FmodSoundEngine::FmodSoundEngine() : mInitialized(false), mSystem(nullptr), mSystemAlive(new bool(false)) {}

FmodSoundEngine::~FmodSoundEngine() { shutdown(); }

bool FmodSoundEngine::initialize() {
    if (mInitialized)
        return true;
    FMOD_RESULT result = FMOD_System_Create(&mSystem);
    if (result == FMOD_OK)
        result = mSystem->init(kMaxChannels, FMOD_INIT_3D_RIGHTHANDED, nullptr);
    return start(result);
}

bool FmodSoundEngine::initializeLoopback(int rate) {
    if (mInitialized)
        return true;
    FMOD_RESULT result = FMOD_System_Create(&mSystem);
    if (result == FMOD_OK)
        result = mSystem->initLoopback(kMaxChannels, FMOD_INIT_3D_RIGHTHANDED, rate);
    return start(result);
}

bool FmodSoundEngine::start(FMOD_RESULT result) {
    if (result != FMOD_OK) {
        logError(result);
        if (mSystem)
            mSystem->release();
        mSystem = nullptr;
        return false;
    }
    mInitialized = true;
    *mSystemAlive = true;
    return true;
}

bool FmodSoundEngine::renderLoopback(float* stereoFrames, int frames) {
    if (!mSystem)
        return false;
    FMOD_RESULT result = mSystem->renderLoopback(stereoFrames, frames);
    if (result != FMOD_OK)
        logError(result);
    return result == FMOD_OK;
}

bool FmodSoundEngine::shutdown() {
    if (!mSystem)
        return true;
    // Sources and channels still held stop calling into the system first.
    *mSystemAlive = false;
    mSystemAlive = Dorvan::SharedPtr<bool>(new bool(false));
    FMOD_RESULT result = mSystem->release();
    mSystem = nullptr;
    mInitialized = false;
    if (result != FMOD_OK) {
        logError(result);
        return false;
    }
    return true;
}

bool FmodSoundEngine::update(std::int64_t) {
    if (!mSystem)
        return false;
    FMOD_RESULT result = mSystem->update();
    if (result != FMOD_OK) {
        logError(result);
        return false;
    }
    return true;
}

void FmodSoundEngine::updateListenerAttributes(const Dorvan::TVector<float, 3>& position,
                                               const Dorvan::TVector<float, 3>& velocity,
                                               const Dorvan::TVector<float, 3>& forward,
                                               const Dorvan::TVector<float, 3>& up, unsigned int listener) {
    if (!mSystem)
        return;
    const FMOD_VECTOR fmodPosition{position[0], position[1], position[2]};
    const FMOD_VECTOR fmodVelocity{velocity[0], velocity[1], velocity[2]};
    FMOD_VECTOR fmodForward, fmodUp;
    bool oriented =
        normalized(forward, fmodForward) && normalized(up, fmodUp) &&
        std::fabs(fmodForward.x * fmodUp.x + fmodForward.y * fmodUp.y + fmodForward.z * fmodUp.z) < 0.9999f;
    mSystem->set3DListenerAttributes(static_cast<int>(listener), &fmodPosition, &fmodVelocity,
                                     oriented ? &fmodForward : nullptr, oriented ? &fmodUp : nullptr);
}

Dorvan::SharedPtr<SoundSource> FmodSoundEngine::createSoundSource(const NameMapper::ResourceInfo& info,
                                                                  bool positional) const {
    if (!mSystem)
        return Dorvan::SharedPtr<SoundSource>();
    FMOD_MODE mode = FMOD_LOOP_NORMAL | FMOD_SOFTWARE | FMOD_CREATESTREAM;
    mode |= positional ? FMOD_3D : FMOD_3D_HEADRELATIVE;
    FMOD::Sound* sound = nullptr;
    FMOD_RESULT result =
        mSystem->createSound(toNativePath(info.getFileName()).c_str(), mode, nullptr, &sound);
    if (result != FMOD_OK) {
        logError(result);
        return Dorvan::SharedPtr<SoundSource>();
    }
    return Dorvan::SharedPtr<SoundSource>(new FmodSound(*sound, mSystemAlive));
}

Dorvan::SharedPtr<SoundChannel> FmodSoundEngine::createChannel(Dorvan::SharedPtr<SoundSource> source) const {
    if (!mSystem || !dynamic_cast<FmodSound*>(source.get()))
        return Dorvan::SharedPtr<SoundChannel>();
    return Dorvan::SharedPtr<SoundChannel>(new FmodChannel(*mSystem, source, mSystemAlive));
}

void FmodSoundEngine::logError(FMOD_RESULT result) const {
    VelunCore::getLogger("plugins.sound.fmod")->error("FMOD Error: " + fmodErrorText(result));
}

}  // namespace Velun
