#pragma once

#include "geometry/ElementData.h"
#include "velun_export.h"

namespace Velun {

// Triangles as index triples into the geometry's shared vertex set.
class VELUN_EXPORT IndexedTriangles : public IndexElementData {
public:
    // Room for `capacity` indices at first; the list grows by itself beyond it.
    explicit IndexedTriangles(int capacity = 6);
    ~IndexedTriangles() override;

    void addTriangle(unsigned int a, unsigned int b, unsigned int c);
};

}  // namespace Velun
