#pragma once

#include <string>

#include "velun_export.h"

namespace Velun {

// Component type of vertex data, index data and pixels.
class VELUN_EXPORT DataType {
public:
    // The numbers are part of the interface: renderers and loaders switch on them.
    enum Type : int {
        None = 0,
        Float = 1,
        Double = 2,
        Int = 3,
        Byte = 4,
        Short = 5,
        Bool = 6,
        UnsignedByte = 7,
        UnsignedShort = 8,
        UnsignedInt = 9
    };

    // Bytes of one component; 0 for None and for values out of range.
    static unsigned int getSize(Type type);
    // Display text ("Unsigned Short"); empty for values out of range.
    static const std::string& getName(Type type);
};

}  // namespace Velun
