#pragma once

#include "geometry/ElementData.h"
#include "velun_export.h"

namespace Velun {

// A quad strip, two indices per step, into the geometry's shared vertex set.
class VELUN_EXPORT IndexedQuadStrip : public IndexElementData {
public:
    // Room for `capacity` indices at first; the list grows by itself beyond it.
    explicit IndexedQuadStrip(int capacity = 6);
    ~IndexedQuadStrip() override;

    void addQuad(unsigned int a, unsigned int b);
};

}  // namespace Velun
