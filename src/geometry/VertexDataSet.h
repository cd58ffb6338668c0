#pragma once

#include "foundation/Vector.h"
#include "geometry/DataSet.h"
#include "geometry/DataType.h"
#include "velun_export.h"

namespace Velun {

// Vertex attributes as the renderer reads them: per attribute a raw pointer, a component
// count, a component type and a stride. A type of DataType::None tells the renderer the
// attribute is absent; a stride of 0 means tightly packed. Implement it over data of your
// own, or use VertexData.
class VELUN_EXPORT VertexDataSet : public virtual DataSet {
public:
    // The attribute a stride is asked for. Scoped, so that Part::Color does not hide the
    // Color value type inside vertex set classes.
    enum class Part {
        Vertex = 0,
        Color = 1,
        SecondaryColor = 2,
        Normal = 3,
        FogCoordinate = 4,
        TexCoordinate = 5
    };

    ~VertexDataSet() override;

    // Number of vertices.
    virtual unsigned int getCount() const = 0;
    virtual const void* getVertices() const = 0;
    virtual const void* getColor() const = 0;
    virtual const void* getSecondaryColor() const = 0;
    virtual const void* getNormals() const = 0;
    virtual const void* getFogCoordinates() const = 0;
    virtual const void* getTexCoordinates(unsigned int layer) const = 0;
    // Components per position, colour, secondary colour and texture coordinate.
    virtual int getNumVertex() const = 0;
    virtual int getNumColor() const = 0;
    virtual int getNumSecondaryColor() const = 0;
    virtual int getNumTexCoord(unsigned int layer) const = 0;
    virtual unsigned int getNumTexLayer() const = 0;
    // One texture index per layer.
    virtual const Dorvan::Vector<unsigned int>& getTexturesIndices() const = 0;

    // The defaults declare nothing: a set that only supplies pointers and counts overrides
    // the types it has.
    virtual DataType::Type getVertexType() const;
    virtual DataType::Type getColorType() const;
    virtual DataType::Type getSecondaryColorType() const;
    virtual DataType::Type getNormalType() const;
    virtual DataType::Type getFogCoordinateType() const;
    virtual DataType::Type getTexCoordinateType(unsigned int layer) const;
    // Bytes from one vertex's attribute to the next; 0 means tightly packed.
    virtual unsigned int getStride(Part part) const;
};

}  // namespace Velun
