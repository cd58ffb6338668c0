#pragma once

#include <string>
#include <vector>

#include "sound/SoundEngine.h"

namespace SoundTest {

typedef Dorvan::TVector<float, 3> Vec3;

class RecordingSource : public Velun::SoundSource {
public:
    int getLength() const override { return -1; }
    int getChannels() const override { return -1; }
};

// Records the places it is given; every other operation succeeds and does nothing.
class RecordingChannel : public Velun::SoundChannel {
public:
    bool setSoundSource(Dorvan::SharedPtr<Velun::SoundSource>) override { return true; }
    bool setVolume(float) override { return true; }
    bool play() override { return true; }
    bool stop() override { return true; }
    bool setPaused(bool) override { return true; }
    bool setRepeat(bool) override { return true; }
    bool setMute(bool) override { return true; }
    bool setLoopCount(int) override { return true; }
    bool set3DAttributes(const Vec3& position, const Vec3& velocity) override {
        mPositions.push_back(position);
        mVelocities.push_back(velocity);
        return true;
    }
    bool isPlaying() const override { return false; }
    bool isMuted() const override { return false; }
    bool isPaused() const override { return false; }

    std::vector<Vec3> mPositions;
    std::vector<Vec3> mVelocities;
};

// A sound engine that records the calls made on it. Files whose name contains
// "missing" cannot be opened; initialisation fails when mFailInitialize is set.
class RecordingSoundEngine : public Velun::SoundEngine {
public:
    bool isInitialized() const override { return mInitialized; }
    bool initialize() override {
        ++mInitializeCalls;
        mInitialized = !mFailInitialize;
        return mInitialized;
    }
    bool shutdown() override {
        mInitialized = false;
        return true;
    }
    bool update(std::int64_t timestamp) override {
        mUpdates.push_back(timestamp);
        return true;
    }
    Dorvan::SharedPtr<Velun::SoundSource> createSoundSource(const Velun::NameMapper::ResourceInfo& info,
                                                            bool) const override {
        mOpened.push_back(info.getFileName());
        if (info.getFileName().find("missing") != std::string::npos)
            return Dorvan::SharedPtr<Velun::SoundSource>();
        return Dorvan::SharedPtr<Velun::SoundSource>(new RecordingSource());
    }
    Dorvan::SharedPtr<Velun::SoundChannel>
    createChannel(Dorvan::SharedPtr<Velun::SoundSource>) const override {
        return Dorvan::SharedPtr<Velun::SoundChannel>(new RecordingChannel());
    }
    void updateListenerAttributes(const Vec3& position, const Vec3&, const Vec3&, const Vec3&,
                                  unsigned int listener) override {
        mListener = position;
        mListenerIndex = listener;
    }

    bool mInitialized = false;
    bool mFailInitialize = false;
    int mInitializeCalls = 0;
    std::vector<std::int64_t> mUpdates;
    mutable std::vector<std::string> mOpened;
    Vec3 mListener = Vec3(0, 0, 0);
    unsigned int mListenerIndex = 99;
};

}  // namespace SoundTest
