#pragma once

#include <cstdint>

#include "core/TimerManager.h"
#include "core/TimerPlugin.h"
#include "core/VelunCore.h"

namespace VelunTest {

// Starts the engine for the length of a test and drives its timestamps by hand, so that
// stamps set through TimerManager have known values.
class EngineClock : public Velun::TimerPlugin {
public:
    EngineClock() : mTime(0), mStartedHere(!Velun::VelunCore::getSingleton().isStarted()) {
        if (mStartedHere)
            Velun::VelunCore::getSingleton().startup();
        Velun::VelunCore::getSingleton().getTimerManager().registerTimerPlugin(*this);
    }
    ~EngineClock() override {
        Velun::VelunCore::getSingleton().getTimerManager().unregisterTimerPlugin(*this);
        if (mStartedHere)
            Velun::VelunCore::getSingleton().shutdown();
    }

    void setTime(std::int64_t time) { mTime = time; }

    bool isInitialized() override { return true; }
    bool initialize() override { return true; }
    bool shutdown() override { return true; }
    bool hasTimestamp() override { return true; }
    bool hasHighresCounter() override { return false; }
    bool hasTimer() override { return false; }
    std::int64_t getTimestampResolution() override { return 1; }
    std::int64_t getTimerResolution() override { return 1; }
    double getHighresCounterResolution() override { return 1.0; }
    std::int64_t getTimestamp() override { return mTime; }
    Dorvan::SharedPtr<Velun::Timer> createTimer() override { return Dorvan::SharedPtr<Velun::Timer>(); }
    Dorvan::SharedPtr<Velun::Counter> createHighresCounter() override {
        return Dorvan::SharedPtr<Velun::Counter>();
    }

private:
    std::int64_t mTime;
    bool mStartedHere;
};

}  // namespace VelunTest
