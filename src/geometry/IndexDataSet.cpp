#include "geometry/IndexDataSet.h"

namespace Velun {

IndexDataSet::~IndexDataSet() {}

}  // namespace Velun
