#include "geometry/VertexData.h"

#include <cmath>

#include "scene/Color.h"

namespace Velun {

namespace {

const unsigned int kFloatSize = 4;
const unsigned int kTexCoordFloats = 2;

// Floats per vertex of each Part but the texture coordinates, whose count depends on
// the layers.
const unsigned int kFloatsPerVertex[] = {3, 4, 3, 3, 1, kTexCoordFloats};

}  // namespace

VertexData::VertexData()
    : AbstractGeometryData(true), mCount(0), mCapacity(0), mGrowth(0), mCurrent(NoVertex) {
    attribute(Part::Vertex).mUsed = true;
}

VertexData::VertexData(const VertexData& other) = default;

VertexData::~VertexData() {}

VertexData& VertexData::operator=(const VertexData& other) = default;

unsigned int VertexData::getCount() const { return mCount; }

const void* VertexData::getVertices() const { return attribute(Part::Vertex).mValues.get(); }

const void* VertexData::getColor() const { return attribute(Part::Color).mValues.get(); }

const void* VertexData::getSecondaryColor() const { return attribute(Part::SecondaryColor).mValues.get(); }

const void* VertexData::getNormals() const { return attribute(Part::Normal).mValues.get(); }

const void* VertexData::getFogCoordinates() const { return attribute(Part::FogCoordinate).mValues.get(); }

const void* VertexData::getTexCoordinates(unsigned int layer) const {
    const unsigned char* base =
        static_cast<const unsigned char*>(attribute(Part::TexCoordinate).mValues.get());
    if (!base)
        return nullptr;
    return base + layer * kTexCoordFloats * kFloatSize;
}

int VertexData::getNumVertex() const { return kFloatsPerVertex[static_cast<unsigned int>(Part::Vertex)]; }

int VertexData::getNumColor() const { return kFloatsPerVertex[static_cast<unsigned int>(Part::Color)]; }

int VertexData::getNumSecondaryColor() const {
    return kFloatsPerVertex[static_cast<unsigned int>(Part::SecondaryColor)];
}

int VertexData::getNumTexCoord(unsigned int) const { return kTexCoordFloats; }

unsigned int VertexData::getNumTexLayer() const { return mTextureIndices.size(); }

const Dorvan::Vector<unsigned int>& VertexData::getTexturesIndices() const { return mTextureIndices; }

DataType::Type VertexData::typeOf(Part part) const {
    const Attribute& array = attribute(part);
    if (!array.mUsed || (mCount > 0 && array.mValues.isNull()))
        return DataType::None;
    return DataType::Float;
}

DataType::Type VertexData::getVertexType() const { return typeOf(Part::Vertex); }

DataType::Type VertexData::getColorType() const { return typeOf(Part::Color); }

DataType::Type VertexData::getSecondaryColorType() const { return typeOf(Part::SecondaryColor); }

DataType::Type VertexData::getNormalType() const { return typeOf(Part::Normal); }

DataType::Type VertexData::getFogCoordinateType() const { return typeOf(Part::FogCoordinate); }

DataType::Type VertexData::getTexCoordinateType(unsigned int) const { return typeOf(Part::TexCoordinate); }

unsigned int VertexData::getStride(Part part) const {
    if (part == Part::TexCoordinate)
        return floatsPerVertex(part) * kFloatSize;
    return 0;
}

void VertexData::setUseVertex(bool use) { attribute(Part::Vertex).mUsed = use; }

void VertexData::setUseColor(bool use) { attribute(Part::Color).mUsed = use; }

void VertexData::setUseSecondaryColor(bool use) { attribute(Part::SecondaryColor).mUsed = use; }

void VertexData::setUseNormal(bool use) { attribute(Part::Normal).mUsed = use; }

void VertexData::setUseFogCoordinates(bool use) { attribute(Part::FogCoordinate).mUsed = use; }

void VertexData::setUseTexCoordinates(bool use) { attribute(Part::TexCoordinate).mUsed = use; }

void VertexData::addTextureIndex(unsigned int index) { mTextureIndices.add(index); }

unsigned int VertexData::floatsPerVertex(Part part) const {
    if (part == Part::TexCoordinate)
        return kTexCoordFloats * mTextureIndices.size();
    return kFloatsPerVertex[static_cast<unsigned int>(part)];
}

unsigned int VertexData::bytes(Part part) const { return kFloatSize * floatsPerVertex(part) * mCapacity; }

void VertexData::initialize(int capacity, int growth) {
    mCapacity = capacity > 0 ? static_cast<unsigned int>(capacity) : 0;
    mGrowth = growth > 0 ? static_cast<unsigned int>(growth) : 0;
    mCount = 0;
    mCurrent = NoVertex;
    deleteData();
    for (unsigned int i = 0; i < kPartCount; ++i) {
        if (mAttributes[i].mUsed)
            mAttributes[i].mValues.alloc(bytes(static_cast<Part>(i)));
    }
}

void VertexData::setGrowth(int growth) { mGrowth = growth > 0 ? static_cast<unsigned int>(growth) : 0; }

void VertexData::deleteData() {
    for (Attribute& array : mAttributes)
        array.mValues.setNull();
}

unsigned int VertexData::addVertex() {
    ++mCount;
    if (mCount > mCapacity) {
        // A growth of 0 still grows, so no write ever lands past the arrays.
        mCapacity += mGrowth > 0 ? mGrowth : 1;
        for (unsigned int i = 0; i < kPartCount; ++i) {
            if (!mAttributes[i].mValues.isNull())
                mAttributes[i].mValues.resize(bytes(static_cast<Part>(i)));
        }
    }
    mCurrent = mCount - 1;
    return mCurrent;
}

bool VertexData::setCurrentVertex(unsigned int i) {
    if (i < mCount) {
        mCurrent = i;
        return true;
    }
    mCurrent = mCount - 1;
    return false;
}

float* VertexData::writable(Part part) {
    Dorvan::CowMemPtr<void>& values = attribute(part).mValues;
    if (mCurrent == NoVertex || mCurrent >= mCapacity || values.isNull())
        return nullptr;
    return static_cast<float*>(values.get());
}

float* VertexData::getVertexArray() {
    Attribute& positions = attribute(Part::Vertex);
    if (!positions.mUsed || positions.mValues.isNull())
        return nullptr;
    return static_cast<float*>(positions.mValues.get());
}

void VertexData::setVertex(float x, float y, float z) {
    float* data = writable(Part::Vertex);
    if (!data)
        return;
    float* v = data + getNumVertex() * mCurrent;
    v[0] = x;
    v[1] = y;
    v[2] = z;
}

void VertexData::setColor(float r, float g, float b, float a) {
    float* data = writable(Part::Color);
    if (!data)
        return;
    float* c = data + getNumColor() * mCurrent;
    c[0] = r;
    c[1] = g;
    c[2] = b;
    c[3] = a;
}

void VertexData::setColor(const Color& color) { setColor(color.r, color.g, color.b, color.a); }

void VertexData::setSecondaryColor(float r, float g, float b) {
    float* data = writable(Part::SecondaryColor);
    if (!data)
        return;
    float* c = data + getNumSecondaryColor() * mCurrent;
    c[0] = r;
    c[1] = g;
    c[2] = b;
}

void VertexData::setNormal(float x, float y, float z) {
    float* data = writable(Part::Normal);
    if (!data)
        return;
    // In double, so that tiny components neither vanish nor overflow the scale.
    double length =
        std::sqrt(static_cast<double>(x) * x + static_cast<double>(y) * y + static_cast<double>(z) * z);
    float* n = data + 3 * mCurrent;
    if (!(length > 0.0) || !std::isfinite(length)) {
        // A normal without a direction stores +z rather than NaN.
        n[0] = 0.0f;
        n[1] = 0.0f;
        n[2] = 1.0f;
        return;
    }
    n[0] = static_cast<float>(x / length);
    n[1] = static_cast<float>(y / length);
    n[2] = static_cast<float>(z / length);
}

void VertexData::setFogCoordinate(float f) {
    float* data = writable(Part::FogCoordinate);
    if (!data)
        return;
    data[mCurrent] = f;
}

void VertexData::setTexCoordinate(float u, float v, unsigned int layer) {
    unsigned int layers = mTextureIndices.size();
    if (layer >= layers)
        return;
    float* data = writable(Part::TexCoordinate);
    if (!data)
        return;
    // The texture index list may have grown after initialize: stay inside the array.
    unsigned int offset = (layers * mCurrent + layer) * kTexCoordFloats;
    if ((offset + 2) * kFloatSize > attribute(Part::TexCoordinate).mValues.getByteSize())
        return;
    float* t = data + offset;
    t[0] = u;
    t[1] = v;
}

}  // namespace Velun
