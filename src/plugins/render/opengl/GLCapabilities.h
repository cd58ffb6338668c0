#pragma once

#include "render/Capabilities.h"
#include "velun_export.h"

namespace Velun {

// What the GL engine can do. The flags that matter for drawing (buffer objects, point
// sprites) are known per window, from its GLRenderContext.
class VELUN_EXPORT GLCapabilities : public Capabilities {
public:
    GLCapabilities();
    ~GLCapabilities() override;
};

}  // namespace Velun
