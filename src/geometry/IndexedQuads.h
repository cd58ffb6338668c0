#pragma once

#include "geometry/ElementData.h"
#include "velun_export.h"

namespace Velun {

// Quads as four indices each into the geometry's shared vertex set.
class VELUN_EXPORT IndexedQuads : public IndexElementData {
public:
    // Room for `capacity` indices at first; the list grows by itself beyond it.
    explicit IndexedQuads(int capacity = 6);
    ~IndexedQuads() override;

    void addQuad(unsigned int a, unsigned int b, unsigned int c, unsigned int d);
};

}  // namespace Velun
