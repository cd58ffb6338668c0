#pragma once

#include "geometry/GeometryElement.h"
#include "geometry/IndexData.h"
#include "geometry/VertexData.h"
#include "velun_export.h"

namespace Velun {

// An element that stores its type; base of the elements that own their data.
class VELUN_EXPORT ElementData : public virtual GeometryElement {
public:
    explicit ElementData(ElementType type);
    ~ElementData() override;

    ElementType getElementType() const override;

private:
    ElementType mElementType;
};

// An element with a VertexData of its own, drawn with all its vertices.
class VELUN_EXPORT VertexElementData : public ElementData, public VertexElement {
public:
    explicit VertexElementData(ElementType type);
    ~VertexElementData() override;

    VertexData& getVertexData() override;
    const VertexData& getVertexData() const;

private:
    VertexData mVertexData;
};

// An element with an IndexData of its own, indexing its geometry's shared vertex set.
class VELUN_EXPORT IndexElementData : public ElementData, public IndexElement {
public:
    explicit IndexElementData(ElementType type);
    ~IndexElementData() override;

    IndexData& getIndexList() override;
    const IndexData& getIndexList() const;

private:
    IndexData mIndexData;
};

}  // namespace Velun
