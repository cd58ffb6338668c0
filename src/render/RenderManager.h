#pragma once

#include <vector>

#include "core/Subsystem.h"
#include "velun_export.h"

namespace Velun {

// Keeps the render engines and draws every render window once per pass.
class VELUN_EXPORT RenderManager : public Subsystem {
public:
    RenderManager();
    virtual ~RenderManager();

    virtual std::vector<Process*>* getProcessList();

private:
    std::vector<Process*> mProcesses;
};

}  // namespace Velun
