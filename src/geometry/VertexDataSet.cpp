#include "geometry/VertexDataSet.h"

namespace Velun {

VertexDataSet::~VertexDataSet() {}

DataType::Type VertexDataSet::getVertexType() const { return DataType::None; }

DataType::Type VertexDataSet::getColorType() const { return DataType::None; }

DataType::Type VertexDataSet::getSecondaryColorType() const { return DataType::None; }

DataType::Type VertexDataSet::getNormalType() const { return DataType::None; }

DataType::Type VertexDataSet::getFogCoordinateType() const { return DataType::None; }

DataType::Type VertexDataSet::getTexCoordinateType(unsigned int) const { return DataType::None; }

unsigned int VertexDataSet::getStride(Part) const { return 0; }

}  // namespace Velun
