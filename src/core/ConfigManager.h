#pragma once

#include <string>

#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

// Keeps an application's command-line arguments and the name of its configuration
// file for later use. The engine itself reads neither: every engine setting passes
// through the constructors and setters of the classes concerned.
class VELUN_EXPORT ConfigManager {
public:
    ConfigManager();
    virtual ~ConfigManager();

    // Keeps a copy of the arguments (appended to those kept before); returns 0.
    int parseArguments(const Dorvan::Vector<std::string>& arguments, bool);
    void clearArguments();
    unsigned int getArgumentCount() const;
    // Argument at this position; the position is not checked.
    std::string getArgument(unsigned int position) const;

    void setConfigurationFilename(const std::string& filename);
    const std::string& getConfigurationFilename() const;
    // Remembers the name as the configuration file; no file is opened, so this
    // succeeds whether or not it exists.
    bool loadConfiguration(const std::string& filename);

private:
    Dorvan::Vector<std::string> mArguments;
    std::string mConfigurationFilename;
};

}  // namespace Velun
