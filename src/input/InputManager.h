#pragma once

#include <vector>

#include "core/Subsystem.h"
#include "velun_export.h"

namespace Velun {

// Polls the input providers and hands their events to the application's processors.
class VELUN_EXPORT InputManager : public Subsystem {
public:
    InputManager();
    virtual ~InputManager();

    virtual std::vector<Process*>* getProcessList();

private:
    std::vector<Process*> mProcesses;
};

}  // namespace Velun
