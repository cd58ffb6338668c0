#pragma once

#include "geometry/ElementData.h"
#include "velun_export.h"

namespace Velun {

// A triangle strip, one index at a time, into the geometry's shared vertex set.
class VELUN_EXPORT IndexedTriangleStrip : public IndexElementData {
public:
    // Room for `capacity` indices at first; the list grows by itself beyond it.
    explicit IndexedTriangleStrip(int capacity = 6);
    ~IndexedTriangleStrip() override;

    void addVertice(unsigned int index);
};

}  // namespace Velun
