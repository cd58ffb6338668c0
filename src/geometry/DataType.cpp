#include "geometry/DataType.h"

namespace Velun {

namespace {

const unsigned int kSizes[] = {0, 4, 8, 4, 1, 2, 1, 1, 2, 4};

const std::string kNames[] = {"None", "Float",         "Double",         "Int",         "Byte", "Short",
                              "Bool", "Unsigned Byte", "Unsigned Short", "Unsigned Int"};

bool inRange(DataType::Type type) {
    return static_cast<int>(type) >= DataType::None && static_cast<int>(type) <= DataType::UnsignedInt;
}

}  // namespace

unsigned int DataType::getSize(Type type) { return inRange(type) ? kSizes[type] : 0; }

const std::string& DataType::getName(Type type) {
    static const std::string empty;
    return inRange(type) ? kNames[type] : empty;
}

}  // namespace Velun
