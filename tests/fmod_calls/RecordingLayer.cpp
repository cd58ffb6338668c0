#include "RecordingLayer.h"

#include <cstdint>
#include <sstream>

namespace FmodCalls {

Recording& recording() {
    static Recording instance;
    return instance;
}

namespace {
FMOD_RESULT record(const std::string& name, const std::string& arguments = std::string()) {
    Recording& r = recording();
    r.mCalls.push_back(name + (arguments.empty() ? std::string() : "(" + arguments + ")"));
    return r.mResults.count(name) ? r.mResults[name] : FMOD_OK;
}

template <class T>
std::string text(T value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

// Handles are numbers, as in the library; each started voice gets the next one.
std::uintptr_t gNextHandle = 0x10;
}  // namespace

}  // namespace FmodCalls

using FmodCalls::record;
using FmodCalls::text;

FMOD_RESULT FMOD_System_Create(FMOD::System** system) {
    *system = new FmodCalls::StandInSystem();
    return record("System_Create");
}

namespace FMOD {

FMOD_RESULT System::init(int, FMOD_INITFLAGS, void*) { return record("init"); }
FMOD_RESULT System::initLoopback(int, FMOD_INITFLAGS, int) { return record("initLoopback"); }
FMOD_RESULT System::renderLoopback(float*, int) { return record("renderLoopback"); }
FMOD_RESULT System::release() {
    FMOD_RESULT result = record("release");
    for (Sound* sound : FmodCalls::recording().mSounds)
        delete static_cast<FmodCalls::StandInSound*>(sound);
    FmodCalls::recording().mSounds.clear();
    delete static_cast<FmodCalls::StandInSystem*>(this);
    return result;
}
FMOD_RESULT System::update() { return record("update"); }
FMOD_RESULT System::set3DListenerAttributes(int, const FMOD_VECTOR*, const FMOD_VECTOR*, const FMOD_VECTOR*,
                                            const FMOD_VECTOR*) {
    return record("set3DListenerAttributes");
}
FMOD_RESULT System::createSound(const char* name, FMOD_MODE mode, FMOD_CREATESOUNDEXINFO*, Sound** sound) {
    std::ostringstream arguments;
    arguments << name << ",0x" << std::hex << std::uppercase << mode;
    FMOD_RESULT result = record("createSound", arguments.str());
    *sound = result == FMOD_OK ? new FmodCalls::StandInSound() : nullptr;
    if (*sound)
        FmodCalls::recording().mSounds.insert(*sound);
    return result;
}
FMOD_RESULT System::playSound(FMOD_CHANNELINDEX channelid, Sound*, bool paused, Channel** channel) {
    FMOD_RESULT result = record("playSound", text(channelid) + "," + text(paused));
    if (result == FMOD_OK) {
        *channel = reinterpret_cast<Channel*>(FmodCalls::gNextHandle);
        FmodCalls::gNextHandle += 0x10;
    }
    return result;
}

FMOD_RESULT Sound::release() {
    FmodCalls::recording().mSounds.erase(this);
    delete static_cast<FmodCalls::StandInSound*>(this);
    return record("Sound::release");
}

FMOD_RESULT Channel::isPlaying(bool* isplaying) {
    *isplaying = true;
    return record("isPlaying");
}
FMOD_RESULT Channel::stop() { return record("stop"); }
FMOD_RESULT Channel::setPaused(bool paused) { return record("setPaused", text(paused)); }
FMOD_RESULT Channel::getPaused(bool* paused) {
    *paused = FmodCalls::recording().mVoicePaused;
    return record("getPaused");
}
FMOD_RESULT Channel::setVolume(float volume) { return record("setVolume", text(volume)); }
FMOD_RESULT Channel::setMute(bool mute) { return record("setMute", text(mute)); }
FMOD_RESULT Channel::setLoopCount(int loopcount) { return record("setLoopCount", text(loopcount)); }
FMOD_RESULT Channel::set3DAttributes(const FMOD_VECTOR* pos, const FMOD_VECTOR*) {
    return record("set3DAttributes", text(pos->x) + "," + text(pos->y) + "," + text(pos->z));
}

}  // namespace FMOD
