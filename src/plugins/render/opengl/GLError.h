#pragma once

#include <GL/glew.h>

#include <string>

namespace Velun {

// Writes "<prefix><GLU's text for code>" as one error line on the log channel `channel`.
void logGLError(const char* channel, const std::string& prefix, GLenum code);

}  // namespace Velun
