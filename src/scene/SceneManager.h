#pragma once

#include <vector>

#include "core/Subsystem.h"
#include "velun_export.h"

namespace Velun {

// Owns the scenes and overlays and runs their update pass once per pass.
class VELUN_EXPORT SceneManager : public Subsystem {
public:
    SceneManager();
    virtual ~SceneManager();

    virtual std::vector<Process*>* getProcessList();

private:
    std::vector<Process*> mProcesses;
};

}  // namespace Velun
