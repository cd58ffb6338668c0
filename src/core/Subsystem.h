#pragma once

#include <vector>

#include "core/Process.h"
#include "velun_export.h"

namespace Velun {

// A long-lived unit of the engine with per-frame work: the main loop runs the
// processes of each registered subsystem once per pass, in update order.
class VELUN_EXPORT Subsystem {
public:
    // In which kind of pass the subsystem takes part.
    enum UpdateMode {
        UpdateManual = 0,     // only through ProcessManager::updateSubsystem
        UpdateAlways = 1,     // passes of run, and update(true) while run is not active
        UpdateOnRequest = 2,  // passes of update(true) only
        UpdateInLoop = 3      // passes of run only
    };
    // 0 and 1 run every process of the list; any other value runs none.
    enum ProcessMode { ProcessAlways = 0, ProcessDefault = 1, ProcessNone = 2 };

    Subsystem() : mSubsystemId(0), mEnabled(true), mUpdateMode(UpdateAlways), mProcessMode(ProcessDefault) {}
    virtual ~Subsystem() {}

    virtual void setEnabled(bool enabled) { mEnabled = enabled; }
    virtual bool isEnabled() { return mEnabled; }
    virtual void setUpdateMode(UpdateMode mode) { mUpdateMode = mode; }
    virtual UpdateMode getUpdateMode() { return mUpdateMode; }
    virtual void setProcessMode(ProcessMode mode) { mProcessMode = mode; }
    virtual ProcessMode getProcessMode() { return mProcessMode; }
    // The processes run at each update, or null for a subsystem without any.
    virtual std::vector<Process*>* getProcessList() = 0;

    int getSubsystemId() const { return mSubsystemId; }

protected:
    void setSubsystemId(int id) { mSubsystemId = id; }

private:
    int mSubsystemId;
    bool mEnabled;
    UpdateMode mUpdateMode;
    ProcessMode mProcessMode;
};

}  // namespace Velun
