#pragma once

#include "foundation/CowMemPtr.h"
#include "foundation/Vector.h"
#include "geometry/AbstractGeometryData.h"
#include "geometry/VertexDataSet.h"
#include "velun_export.h"

namespace Velun {

class Color;

// Vertex attributes in float arrays: positions (3 components), colours (4), secondary
// colours (3), normals (3), fog coordinates (1) and any number of texture coordinate
// layers (2 components each, the layers of one vertex side by side). The arrays are
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
    bool isUsingVertex() const { return mUseVertex; }
    bool isUsingColor() const { return mUseColor; }
    bool isUsingSecondaryColor() const { return mUseSecondaryColor; }
    bool isUsingNormal() const { return mUseNormal; }
    bool isUsingFogCoordinates() const { return mUseFogCoordinates; }
    bool isUsingTexCoordinates() const { return mUseTexCoordinates; }

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
    // copies), or null when positions are not floats in use. Valid until the next
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
    unsigned int vertexBytes() const;
    unsigned int colorBytes() const;
    unsigned int secondaryColorBytes() const;
    unsigned int normalBytes() const;
    unsigned int fogBytes() const;
    unsigned int texCoordBytes() const;
    void allocate(Dorvan::CowMemPtr<void>& array, unsigned int bytes);
    void grow(Dorvan::CowMemPtr<void>& array, unsigned int bytes);
    float* writable(Dorvan::CowMemPtr<void>& array, DataType::Type type);
    DataType::Type typeIfPresent(bool use, DataType::Type type, const Dorvan::CowMemPtr<void>& array) const;

    unsigned int mCount;
    unsigned int mCapacity;
    unsigned int mGrowth;
    unsigned int mCurrent;
    DataType::Type mVertexType;
    DataType::Type mColorType;
    DataType::Type mSecondaryColorType;
    DataType::Type mNormalType;
    DataType::Type mFogCoordinateType;
    DataType::Type mTexCoordinateType;
    bool mUseVertex;
    bool mUseColor;
    bool mUseSecondaryColor;
    bool mUseNormal;
    bool mUseFogCoordinates;
    bool mUseTexCoordinates;
    int mNumVertex;
    int mNumColor;
    int mNumSecondaryColor;
    int mNumTexCoord;
    Dorvan::Vector<unsigned int> mTextureIndices;
    Dorvan::CowMemPtr<void> mVertices;
    Dorvan::CowMemPtr<void> mColors;
    Dorvan::CowMemPtr<void> mSecondaryColors;
    Dorvan::CowMemPtr<void> mNormals;
    Dorvan::CowMemPtr<void> mFogCoordinates;
    Dorvan::CowMemPtr<void> mTexCoordinates;
};

}  // namespace Velun
