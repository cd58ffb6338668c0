#pragma once

#include <map>
#include <vector>

#include "core/Subsystem.h"
#include "velun_export.h"

namespace Velun {

// The scheduler and main loop. One pass over the registered subsystems, in update
// order, is one frame. Operations that take `blocking` only work synchronously:
// run, update and updateSubsystem refuse false (-1); stop can only post a request
// and refuses true while the loop runs. Subsystems are not owned.
class VELUN_EXPORT ProcessManager {
public:
    ProcessManager();
    ~ProcessManager();

    // Repeats passes until stop(false) is called; the pass that sees the request finishes.
    int run(bool blocking);
    int stop(bool blocking);
    // One explicit pass: subsystems in UpdateOnRequest, and in UpdateAlways while run is not active.
    int update(bool blocking);
    // Runs one subsystem's processes, whatever its update mode and enabled flag.
    int updateSubsystem(int id, bool blocking);
    bool isRunning();

    int createSubsystemId();

    // Enters the subsystem and puts it at `position` of the update order (negative or
    // past the end appends). Returns the position, or -1 for a negative id. A subsystem
    // registered twice keeps its first position.
    int registerSubsystem(Subsystem& subsystem, int position);
    // Puts the subsystem just after / before the registered subsystem `id`; returns its
    // position, or -1 when `id` is not in the update order or the subsystem's id is negative.
    int registerSubsystemAfter(Subsystem& subsystem, int id);
    int registerSubsystemBefore(Subsystem& subsystem, int id);

    // The subsystem with this id, or null.
    Subsystem* getSubsystem(int id);
    // Position must be inside the update order (std::out_of_range otherwise).
    Subsystem* getSubsystemByPos(int position);
    unsigned int getSubsystemCount();
    // Position in the update order, or -1.
    int getSubsystemPos(int id);

private:
    int _updateSubsystems(bool explicitUpdate);
    int _updateSubsystem(int id);

    bool mRunning;
    bool mStopRequested;
    int mNextSubsystemId;
    std::map<int, Subsystem*> mSubsystems;
    std::vector<int> mSubsystemOrder;
};

}  // namespace Velun
