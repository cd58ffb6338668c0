#include "geometry/DataSet.h"

namespace Velun {

DataSet::~DataSet() {}

std::uint64_t DataSet::createDataSetId() {
    // One counter for the process, not per engine start, so sets that outlive a
    // shutdown never share an identifier with new ones.
    static std::uint64_t lastId = 0;
    return ++lastId;
}

}  // namespace Velun
