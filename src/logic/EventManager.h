#pragma once

#include <vector>

#include "core/Subsystem.h"
#include "velun_export.h"

namespace Velun {

// Runs the registered logic elements once per pass.
class VELUN_EXPORT EventManager : public Subsystem {
public:
    EventManager();
    virtual ~EventManager();

    virtual std::vector<Process*>* getProcessList();

private:
    std::vector<Process*> mProcesses;
};

}  // namespace Velun
