#pragma once

#include <string>

#include "core/NameMapper.h"
#include "velun_export.h"

namespace Velun {

// Maps a name below a base directory: base "\" name, with every "/" of the name turned
// into a backslash, and the extension taken from the last component. Pure string work:
// the file system is not consulted and case is kept. With the base ".\models",
// "tree/oak.ms3d" maps to ".\models\tree\oak.ms3d" of type "ms3d".
class VELUN_EXPORT FileNameMapper : public NameMapper {
public:
    explicit FileNameMapper(const std::string& baseDirectory);
    ~FileNameMapper() override;

    ResourceInfo getResourceInfo(const std::string& name) override;

    const std::string& getBaseDirectory() const { return mBaseDirectory; }

private:
    std::string mBaseDirectory;
};

}  // namespace Velun
