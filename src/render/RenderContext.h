#pragma once

#include "velun_export.h"

namespace Velun {

class RenderEngine;

// The per-surface state of a back end: what it needs to draw into one surface.
class VELUN_EXPORT RenderContext {
public:
    virtual ~RenderContext() {}
    virtual RenderEngine* getRenderEngine() = 0;
    virtual void beginFrame() = 0;
    virtual void endFrame() = 0;
};

}  // namespace Velun
