#include "plugins/render/opengl/GLError.h"

#include <GL/glu.h>

#include "core/VelunCore.h"

namespace Velun {

void logGLError(const char* channel, const std::string& prefix, GLenum code) {
    VelunCore::getLogger(channel)->error(prefix + reinterpret_cast<const char*>(gluErrorString(code)));
}

}  // namespace Velun
