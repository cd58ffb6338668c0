#include "core/NativePath.h"

#include <algorithm>

namespace Velun {

std::string toNativePath(const std::string& path) {
#ifdef _WIN32
    return path;
#else
    std::string native(path);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
#endif
}

}  // namespace Velun
