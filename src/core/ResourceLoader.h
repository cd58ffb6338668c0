#pragma once

#include "velun_export.h"

namespace Velun {

// Base of everything that turns resource names into resources: object, texture and
// texture source loaders and the sound engine. Managers initialise a loader when it is
// registered; shutting it down is up to whoever made it.
class VELUN_EXPORT ResourceLoader {
public:
    virtual ~ResourceLoader();

    virtual bool isInitialized() const = 0;
    virtual bool initialize() = 0;
    virtual bool shutdown() = 0;
};

}  // namespace Velun
