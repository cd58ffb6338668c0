#pragma once

#include <cstdint>
#include <vector>

#include "core/Process.h"
#include "core/ProcessManager.h"
#include "core/Subsystem.h"
#include "core/VelunCore.h"

namespace VelunTest {

// A subsystem of the test's own, appended to the update order of the started engine,
// whose one process records the timestamp of every pass. It runs after the engine's
// subsystems, so it tells whether a pass was finished. With a limit it stops the
// main loop after that many passes.
class PassRecorder : public Velun::Subsystem, public Velun::Process {
public:
    explicit PassRecorder(unsigned int stopAfter = 0) : mStopAfter(stopAfter) {
        Velun::ProcessManager& processes = Velun::VelunCore::getSingleton().getProcessManager();
        setSubsystemId(processes.createSubsystemId());
        mProcesses.push_back(this);
        processes.registerSubsystem(*this, -1);
    }

    std::vector<Velun::Process*>* getProcessList() override { return &mProcesses; }

    int run(std::int64_t timestamp) override {
        mTimestamps.push_back(timestamp);
        if (mTimestamps.size() == mStopAfter)
            Velun::VelunCore::getSingleton().getProcessManager().stop(false);
        return 0;
    }

    unsigned int getPasses() const { return static_cast<unsigned int>(mTimestamps.size()); }

    std::vector<std::int64_t> mTimestamps;

private:
    unsigned int mStopAfter;
    std::vector<Velun::Process*> mProcesses;
};

}  // namespace VelunTest
