#pragma once

#include "core/LoaderPlugin.h"
#include "velun_export.h"

namespace Velun {

// The MS3D model back end: registers an Ms3dObjectLoader with the ObjectManager, and at
// unregistration takes it back and deletes it.
class VELUN_EXPORT Ms3dPlugin : public LoaderPlugin {
public:
    Ms3dPlugin();
};

}  // namespace Velun
