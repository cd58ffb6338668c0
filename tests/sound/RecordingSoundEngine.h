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

// Records the places it is given and whether any velocity was; everything else succeeds.
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
        mMoving = mMoving || velocity.length() > 0.0f;
        return true;
    }
    bool isPlaying() const override { return false; }
    bool isMuted() const override { return false; }
    bool isPaused() const override { return false; }

    std::vector<Vec3> mPositions;
    bool mMoving = false;
};

// Files whose name contains "missing" cannot be opened; initialisation fails when mFail is set.
class RecordingSoundEngine : public Velun::SoundEngine {
public:
    bool isInitialized() const override { return mInitialized; }
    bool initialize() override {
        ++mInitializeCalls;
        return mInitialized = !mFail;
    }
    bool shutdown() override { return !(mInitialized = false); }
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
                                  unsigned int) override {
        mListener = position;
    }

    bool mInitialized = false, mFail = false;
    int mInitializeCalls = 0;
    std::vector<std::int64_t> mUpdates;
    mutable std::vector<std::string> mOpened;
    Vec3 mListener = Vec3(0, 0, 0);
};

}  // namespace SoundTest
