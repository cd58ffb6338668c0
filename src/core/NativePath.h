#pragma once

#include <string>

#include "velun_export.h"

namespace Velun {

// The one place where an engine path meets the file system. Engine paths use the
// backslash as separator (".\models\tree\oak.ms3d", also inside model files); every
// loader passes a path through this just before it opens the file. On POSIX each
// backslash becomes "/"; on Windows the path is returned unchanged.
VELUN_EXPORT std::string toNativePath(const std::string& path);

}  // namespace Velun
