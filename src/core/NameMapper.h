#pragma once

#include <string>

#include "velun_export.h"

namespace Velun {

// Turns a resource name into the path of the file to open. Managers hold one as a
// SharedPtr<NameMapper>; an application may install its own.
class VELUN_EXPORT NameMapper {
public:
    // What a mapper found for one name.
    class VELUN_EXPORT ResourceInfo {
    public:
        ResourceInfo();
        ResourceInfo(const std::string& name, const std::string& fileName, const std::string& fileType);
        virtual ~ResourceInfo();

        const std::string& getName() const { return mName; }
        const std::string& getFileName() const { return mFileName; }
        // The extension without the dot, empty when there is none.
        const std::string& getFileType() const { return mFileType; }

        // The name as the caller gave it.
        std::string mName;
        // The path to open, in the engine's portable form (backslash separators); pass
        // it through toNativePath before opening it.
        std::string mFileName;
        std::string mFileType;
    };

    virtual ~NameMapper();

    virtual ResourceInfo getResourceInfo(const std::string& name) = 0;
};

}  // namespace Velun
