#pragma once

#include "foundation/Vector.h"
#include "velun_export.h"

namespace Velun {

class GeometryElement;

// The part of a geometry drawn with one material: a material index (resolved by the
// drawable) and a list of primitive batches.
class VELUN_EXPORT GeometryGroup {
public:
    virtual ~GeometryGroup();

    virtual unsigned int getMaterialIndex() const = 0;
    // The argument is reserved; renderers pass 0.
    virtual Dorvan::Vector<GeometryElement*>& getElementList(int) = 0;
};

}  // namespace Velun
