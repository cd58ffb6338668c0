#pragma once

#include "velun_export.h"

namespace Velun {

// Makes scene subtrees from models, through cached object factories.
class VELUN_EXPORT ObjectManager {
public:
    ObjectManager();
    virtual ~ObjectManager();
};

}  // namespace Velun
