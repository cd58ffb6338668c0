#pragma once

#include <vector>

#include "core/Subsystem.h"
#include "velun_export.h"

namespace Velun {

// Keeps the sound engine up to date once per pass.
class VELUN_EXPORT SoundManager : public Subsystem {
public:
    SoundManager();
    virtual ~SoundManager();

    virtual std::vector<Process*>* getProcessList();

private:
    std::vector<Process*> mProcesses;
};

}  // namespace Velun
