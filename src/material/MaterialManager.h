#pragma once

#include "velun_export.h"

namespace Velun {

// The resource manager's place for materials. Materials are made by whoever needs them
// and shared through SharedPtr, so there is no registry of materials by name and this
// manager keeps nothing.
class VELUN_EXPORT MaterialManager {
public:
    MaterialManager();
    virtual ~MaterialManager();

private:
    MaterialManager(const MaterialManager&) = delete;
    MaterialManager& operator=(const MaterialManager&) = delete;
};

}  // namespace Velun
