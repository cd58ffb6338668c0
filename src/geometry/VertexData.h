#pragma once

#include "foundation/CowMemPtr.h"
#include "foundation/Vector.h"
#include "geometry/AbstractGeometryData.h"
#include "geometry/VertexDataSet.h"
#include "velun_export.h"

namespace Velun {

class Color;

// Vertex attributes in float arrays: positions (3 components), colours (4), secondary
// colours (3, added to the colour of unlit faces), normals (3), fog coordinates (1) and
// any number of texture coordinate layers (2 components each, the layers of one vertex
// side by side). The arrays are
// copy-on-write, so copying a VertexData is cheap until one side writes.
//
// Filling order: choose the attributes with setUse..., add one texture index per layer,
// initialize(capacity, growth), then per vertex addVertex() followed by the set...
// writes, which go to the current vertex. Writes that have no target (no current vertex,
// attribute not in use, layer out of range) are ignored. Writing does not stamp the set:
// call setModified after changing data that was already drawn.
class VELUN_EXPORT VertexData : public AbstractGeometryData, public VertexDataSet {
public:
    // Marks "no current vertex".
    static const unsigned int NoVertex = 0xFFFFFFFFu;

    VertexData();
    VertexData(const VertexData& other);
    ~VertexData() override;

    VertexData& operator=(const VertexData& other);

    // VertexDataSet
    unsigned int getCount() const override;
    const void* getVertices() const override;
    const void* getColor() const override;
    const void* getSecondaryColor() const override;
    const void* getNormals() const override;
    const void* getFogCoordinates() const override;
    const void* getTexCoordinates(unsigned int layer) const override;
    int getNumVertex() const override;
    int getNumColor() const override;
    int getNumSecondaryColor() const override;
    int getNumTexCoord(unsigned int layer) const override;
    unsigned int getNumTexLayer() const override;
    const Dorvan::Vector<unsigned int>& getTexturesIndices() const override;
    // Float for an attribute in use, None otherwise (also when data is counted but its
    // array is missing, so a renderer never reads a null array).
    DataType::Type getVertexType() const override;
    DataType::Type getColorType() const override;
    DataType::Type getSecondaryColorType() const override;
    DataType::Type getNormalType() const override;
    DataType::Type getFogCoordinateType() const override;
    DataType::Type getTexCoordinateType(unsigned int layer) const override;
    // Texture coordinates: the bytes from one vertex's pair of a layer to the next
    // vertex's; every other attribute is tightly packed (0).
    unsigned int getStride(Part part) const override;

    // Which arrays exist; takes effect at the next initialize.
    void setUseVertex(bool use);
    void setUseColor(bool use);
    void setUseSecondaryColor(bool use);
    void setUseNormal(bool use);
    void setUseFogCoordinates(bool use);
    void setUseTexCoordinates(bool use);
    bool isUsingVertex() const { return isUsing(Part::Vertex); }
    bool isUsingColor() const { return isUsing(Part::Color); }
    bool isUsingSecondaryColor() const { return isUsing(Part::SecondaryColor); }
    bool isUsingNormal() const { return isUsing(Part::Normal); }
    bool isUsingFogCoordinates() const { return isUsing(Part::FogCoordinate); }
    bool isUsingTexCoordinates() const { return isUsing(Part::TexCoordinate); }

    // Adds a texture layer that uses the given texture index; call before initialize.
    void addTextureIndex(unsigned int index);

    // Starts over: empty, with room for `capacity` vertices, growing by `growth`
    // (at least one) vertices whenever more are added.
    void initialize(int capacity, int growth);
    // Frees every array; count, capacity and flags stay.
    void deleteData();
    // Appends a vertex, makes it current and returns its position.
    unsigned int addVertex();
    // Makes vertex `i` current; out of range makes the last one current and fails.
    bool setCurrentVertex(unsigned int i);
    unsigned int getCurrentVertex() const { return mCurrent; }
    unsigned int getCapacity() const { return mCapacity; }
    unsigned int getGrowth() const { return mGrowth; }
    // Vertices added per growth from now on (at least one); an owner that appends many
    // vertices raises it with the capacity, so filling costs amortised constant time.
    void setGrowth(int growth);

    // The position array for bulk writes (getNumVertex floats per vertex, detached from
    // copies), or null when positions are not in use. Valid until the next
    // addVertex or initialize.
    float* getVertexArray();

    void setVertex(float x, float y, float z);
    void setColor(float r, float g, float b, float a);
    void setColor(const Color& color);
    void setSecondaryColor(float r, float g, float b);
    // Stored normalised; a zero-length or non-finite normal is stored as (0, 0, 1).
    void setNormal(float x, float y, float z);
    void setFogCoordinate(float f);
    void setTexCoordinate(float u, float v, unsigned int layer);

private:
    // One array per Part; every value is a float.
    struct Attribute {
        bool mUsed = false;
        Dorvan::CowMemPtr<void> mValues;
    };
    static const unsigned int kPartCount = 6;

    Attribute& attribute(Part part) { return mAttributes[static_cast<unsigned int>(part)]; }
    const Attribute& attribute(Part part) const { return mAttributes[static_cast<unsigned int>(part)]; }
    bool isUsing(Part part) const { return attribute(part).mUsed; }
    unsigned int floatsPerVertex(Part part) const;
    unsigned int bytes(Part part) const;
    float* writable(Part part);
    DataType::Type typeOf(Part part) const;

    unsigned int mCount;
    unsigned int mCapacity;
    unsigned int mGrowth;
    unsigned int mCurrent;
    Dorvan::Vector<unsigned int> mTextureIndices;
    Attribute mAttributes[kPartCount];
};

}  // namespace Velun
