#include "plugins/render/opengl/GLCapabilities.h"

namespace Velun {

GLCapabilities::GLCapabilities() {}

GLCapabilities::~GLCapabilities() {}

}  // namespace Velun
