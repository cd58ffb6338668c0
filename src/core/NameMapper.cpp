#include "core/NameMapper.h"

namespace Velun {

NameMapper::ResourceInfo::ResourceInfo() {}

NameMapper::ResourceInfo::ResourceInfo(const std::string& name, const std::string& fileName,
                                       const std::string& fileType)
    : mName(name), mFileName(fileName), mFileType(fileType) {}

NameMapper::ResourceInfo::~ResourceInfo() {}

NameMapper::~NameMapper() {}

}  // namespace Velun
