#pragma once

#include <cstdint>
#include <vector>

#include "core/Subsystem.h"
#include "velun_export.h"

namespace Velun {

// Owns the scenes and overlays, runs their update pass once per pass and hands out
// node and scene ids.
class VELUN_EXPORT SceneManager : public Subsystem {
public:
    SceneManager();
    virtual ~SceneManager();

    // A new node id: 1 for the first node of the process, never reused.
    std::uint64_t createNodeId();

    virtual std::vector<Process*>* getProcessList();

private:
    std::uint64_t mLastNodeId;
    std::vector<Process*> mProcesses;
};

}  // namespace Velun
