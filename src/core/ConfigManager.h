#pragma once

#include <string>

#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

// Place for command-line and file configuration. The engine reads none: every
// setting passes through constructors and setters, so these operations have no effect.
class VELUN_EXPORT ConfigManager {
public:
    ConfigManager();
    virtual ~ConfigManager();

    int parseArguments(const Dorvan::Vector<std::string>& arguments, bool);
    void clearArguments();
    void setConfigurationFilename(const std::string& filename);
    bool loadConfiguration(const std::string& filename);
};

}  // namespace Velun
