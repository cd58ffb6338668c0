#include "geometry/GeometryElement.h"

namespace Velun {

GeometryElement::~GeometryElement() {}

VertexElement::~VertexElement() {}

IndexElement::~IndexElement() {}

}  // namespace Velun
