#pragma once

#include "core/LoaderPlugin.h"
#include "velun_export.h"

namespace Velun {

// The DevIL back end for images: registers a DevILTextureSourceLoader with the
// TextureManager, and at unregistration takes it back, shuts DevIL down and deletes it.
class VELUN_EXPORT DevILPlugin : public LoaderPlugin {
public:
    DevILPlugin();
};

}  // namespace Velun
