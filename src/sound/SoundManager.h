#pragma once

#include <vector>

#include "core/NameMapper.h"
#include "core/Subsystem.h"
#include "foundation/SharedPtr.h"
#include "velun_export.h"

namespace Velun {

// Keeps the sound engine up to date once per pass.
class VELUN_EXPORT SoundManager : public Subsystem {
public:
    SoundManager();
    ~SoundManager() override;

    std::vector<Process*>* getProcessList() override;

    // Maps sound names to files; set by VelunCore::setup.
    void setSoundNameMapper(Dorvan::SharedPtr<NameMapper> mapper) { mSoundNameMapper = mapper; }
    Dorvan::SharedPtr<NameMapper> getSoundNameMapper() const { return mSoundNameMapper; }

private:
    Dorvan::SharedPtr<NameMapper> mSoundNameMapper;
    std::vector<Process*> mProcesses;
};

}  // namespace Velun
