#include "core/FileNameMapper.h"

namespace Velun {

FileNameMapper::FileNameMapper(const std::string& baseDirectory) : mBaseDirectory(baseDirectory) {}

FileNameMapper::~FileNameMapper() {}

NameMapper::ResourceInfo FileNameMapper::getResourceInfo(const std::string& name) {
    std::string path = mBaseDirectory;
    path += '\\';
    path.reserve(path.size() + name.size());
    for (char c : name)
        path += (c == '/') ? '\\' : c;

    // The separator appended above guarantees the walk stops inside the string.
    std::string type;
    std::string::size_type pos = path.find_last_of(".\\");
    if (pos != std::string::npos && path[pos] == '.')
        type = path.substr(pos + 1);
    return ResourceInfo(name, path, type);
}

}  // namespace Velun
