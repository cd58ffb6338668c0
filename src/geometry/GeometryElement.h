#pragma once

#include "velun_export.h"

namespace Velun {

class VertexDataSet;
class IndexDataSet;

// One primitive batch of one element type. A renderer draws a VertexElement from its own
// vertices, and an IndexElement as indices into its geometry's shared vertex set.
class VELUN_EXPORT GeometryElement {
public:
    // The primitive; the numbers are part of the interface with the renderer.
    enum ElementType {
        Triangles = 0,
        Quads = 1,
        Points = 2,
        Lines = 3,
        LineLoop = 4,
        LineStrip = 5,
        TriangleStrip = 6,
        QuadStrip = 7,
        TriangleFan = 8,
        Polygon = 9
    };

    virtual ~GeometryElement();

    virtual ElementType getElementType() const = 0;
};

// An element with vertices of its own.
class VELUN_EXPORT VertexElement : public virtual GeometryElement {
public:
    ~VertexElement() override;

    virtual VertexDataSet& getVertexData() = 0;
};

// An element made of indices into its geometry's shared vertex set.
class VELUN_EXPORT IndexElement : public virtual GeometryElement {
public:
    ~IndexElement() override;

    virtual IndexDataSet& getIndexList() = 0;
};

}  // namespace Velun
