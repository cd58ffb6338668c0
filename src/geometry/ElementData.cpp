#include "geometry/ElementData.h"

namespace Velun {

ElementData::ElementData(ElementType type) : mElementType(type) {}

ElementData::~ElementData() {}

GeometryElement::ElementType ElementData::getElementType() const { return mElementType; }

VertexElementData::VertexElementData(ElementType type) : ElementData(type) {}

VertexElementData::~VertexElementData() {}

VertexData& VertexElementData::getVertexData() { return mVertexData; }

const VertexData& VertexElementData::getVertexData() const { return mVertexData; }

IndexElementData::IndexElementData(ElementType type) : ElementData(type) {}

IndexElementData::~IndexElementData() {}

IndexData& IndexElementData::getIndexList() { return mIndexData; }

const IndexData& IndexElementData::getIndexList() const { return mIndexData; }

}  // namespace Velun
