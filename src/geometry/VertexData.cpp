#include "geometry/VertexData.h"

#include <cmath>

#include "scene/Color.h"

namespace Velun {

namespace {

const unsigned int kFloatSize = 4;

}  // namespace

VertexData::VertexData()
    : AbstractGeometryData(true), mCount(0), mCapacity(0), mGrowth(0), mCurrent(NoVertex),
      mVertexType(DataType::Float), mColorType(DataType::Float), mSecondaryColorType(DataType::Float),
      mNormalType(DataType::Float), mFogCoordinateType(DataType::Float), mTexCoordinateType(DataType::Float),
      mUseVertex(true), mUseColor(false), mUseSecondaryColor(false), mUseNormal(false),
      mUseFogCoordinates(false), mUseTexCoordinates(false), mNumVertex(3), mNumColor(4),
      mNumSecondaryColor(3), mNumTexCoord(2) {}

VertexData::VertexData(const VertexData& other) = default;

VertexData::~VertexData() {}

VertexData& VertexData::operator=(const VertexData& other) = default;

unsigned int VertexData::getCount() const { return mCount; }

const void* VertexData::getVertices() const { return mVertices.get(); }

const void* VertexData::getColor() const { return mColors.get(); }

const void* VertexData::getSecondaryColor() const { return mSecondaryColors.get(); }

const void* VertexData::getNormals() const { return mNormals.get(); }

const void* VertexData::getFogCoordinates() const { return mFogCoordinates.get(); }

const void* VertexData::getTexCoordinates(unsigned int layer) const {
    const unsigned char* base = static_cast<const unsigned char*>(mTexCoordinates.get());
    if (!base)
        return nullptr;
    return base + layer * mNumTexCoord * kFloatSize;
}

int VertexData::getNumVertex() const { return mNumVertex; }

int VertexData::getNumColor() const { return mNumColor; }

int VertexData::getNumSecondaryColor() const { return mNumSecondaryColor; }

int VertexData::getNumTexCoord(unsigned int) const { return mNumTexCoord; }

unsigned int VertexData::getNumTexLayer() const { return mTextureIndices.size(); }

const Dorvan::Vector<unsigned int>& VertexData::getTexturesIndices() const { return mTextureIndices; }

DataType::Type VertexData::typeIfPresent(bool use, DataType::Type type,
                                         const Dorvan::CowMemPtr<void>& array) const {
    if (!use || (mCount > 0 && array.isNull()))
        return DataType::None;
    return type;
}

DataType::Type VertexData::getVertexType() const { return typeIfPresent(mUseVertex, mVertexType, mVertices); }

DataType::Type VertexData::getColorType() const { return typeIfPresent(mUseColor, mColorType, mColors); }

DataType::Type VertexData::getSecondaryColorType() const {
    return typeIfPresent(mUseSecondaryColor, mSecondaryColorType, mSecondaryColors);
}

DataType::Type VertexData::getNormalType() const { return typeIfPresent(mUseNormal, mNormalType, mNormals); }

DataType::Type VertexData::getFogCoordinateType() const {
    return typeIfPresent(mUseFogCoordinates, mFogCoordinateType, mFogCoordinates);
}

DataType::Type VertexData::getTexCoordinateType(unsigned int) const {
    return typeIfPresent(mUseTexCoordinates, mTexCoordinateType, mTexCoordinates);
}

unsigned int VertexData::getStride(Part part) const {
    if (part == Part::TexCoordinate)
        return mTextureIndices.size() * mNumTexCoord * kFloatSize;
    return 0;
}

void VertexData::setUseVertex(bool use) { mUseVertex = use; }

void VertexData::setUseColor(bool use) { mUseColor = use; }

void VertexData::setUseSecondaryColor(bool use) { mUseSecondaryColor = use; }

void VertexData::setUseNormal(bool use) { mUseNormal = use; }

void VertexData::setUseFogCoordinates(bool use) { mUseFogCoordinates = use; }

void VertexData::setUseTexCoordinates(bool use) { mUseTexCoordinates = use; }

void VertexData::addTextureIndex(unsigned int index) { mTextureIndices.add(index); }

unsigned int VertexData::vertexBytes() const {
    return DataType::getSize(mVertexType) * mNumVertex * mCapacity;
}

unsigned int VertexData::colorBytes() const { return DataType::getSize(mColorType) * mNumColor * mCapacity; }

unsigned int VertexData::secondaryColorBytes() const {
    return DataType::getSize(mSecondaryColorType) * mNumSecondaryColor * mCapacity;
}

unsigned int VertexData::normalBytes() const { return DataType::getSize(mNormalType) * 3 * mCapacity; }

unsigned int VertexData::fogBytes() const { return DataType::getSize(mFogCoordinateType) * mCapacity; }

unsigned int VertexData::texCoordBytes() const {
    return DataType::getSize(mTexCoordinateType) * mTextureIndices.size() * mNumTexCoord * mCapacity;
}

void VertexData::allocate(Dorvan::CowMemPtr<void>& array, unsigned int bytes) { array.alloc(bytes); }

void VertexData::initialize(int capacity, int growth) {
    mCapacity = capacity > 0 ? static_cast<unsigned int>(capacity) : 0;
    mGrowth = growth > 0 ? static_cast<unsigned int>(growth) : 0;
    mCount = 0;
    mCurrent = NoVertex;
    deleteData();
    if (mUseVertex)
        allocate(mVertices, vertexBytes());
    if (mUseColor)
        allocate(mColors, colorBytes());
    if (mUseSecondaryColor)
        allocate(mSecondaryColors, secondaryColorBytes());
    if (mUseNormal)
        allocate(mNormals, normalBytes());
    if (mUseFogCoordinates)
        allocate(mFogCoordinates, fogBytes());
    if (mUseTexCoordinates)
        allocate(mTexCoordinates, texCoordBytes());
}

void VertexData::setGrowth(int growth) { mGrowth = growth > 0 ? static_cast<unsigned int>(growth) : 0; }

void VertexData::deleteData() {
    mVertices.setNull();
    mColors.setNull();
    mSecondaryColors.setNull();
    mNormals.setNull();
    mFogCoordinates.setNull();
    mTexCoordinates.setNull();
}

void VertexData::grow(Dorvan::CowMemPtr<void>& array, unsigned int bytes) {
    if (!array.isNull())
        array.resize(bytes);
}

unsigned int VertexData::addVertex() {
    ++mCount;
    if (mCount > mCapacity) {
        // A growth of 0 still grows, so no write ever lands past the arrays.
        mCapacity += mGrowth > 0 ? mGrowth : 1;
        grow(mVertices, vertexBytes());
        grow(mColors, colorBytes());
        grow(mSecondaryColors, secondaryColorBytes());
        grow(mNormals, normalBytes());
        grow(mFogCoordinates, fogBytes());
        grow(mTexCoordinates, texCoordBytes());
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

float* VertexData::writable(Dorvan::CowMemPtr<void>& array, DataType::Type type) {
    if (mCurrent == NoVertex || mCurrent >= mCapacity || type != DataType::Float || array.isNull())
        return nullptr;
    return static_cast<float*>(array.get());
}

float* VertexData::getVertexArray() {
    if (!mUseVertex || mVertexType != DataType::Float || mVertices.isNull())
        return nullptr;
    return static_cast<float*>(mVertices.get());
}

void VertexData::setVertex(float x, float y, float z) {
    float* data = writable(mVertices, mVertexType);
    if (!data)
        return;
    float* v = data + mNumVertex * mCurrent;
    v[0] = x;
    v[1] = y;
    v[2] = z;
}

void VertexData::setColor(float r, float g, float b, float a) {
    float* data = writable(mColors, mColorType);
    if (!data)
        return;
    float* c = data + mNumColor * mCurrent;
    c[0] = r;
    c[1] = g;
    c[2] = b;
    c[3] = a;
}

void VertexData::setColor(const Color& color) { setColor(color.r, color.g, color.b, color.a); }

void VertexData::setSecondaryColor(float r, float g, float b) {
    float* data = writable(mSecondaryColors, mSecondaryColorType);
    if (!data)
        return;
    float* c = data + mNumSecondaryColor * mCurrent;
    c[0] = r;
    c[1] = g;
    c[2] = b;
}

void VertexData::setNormal(float x, float y, float z) {
    float* data = writable(mNormals, mNormalType);
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
    float* data = writable(mFogCoordinates, mFogCoordinateType);
    if (!data)
        return;
    data[mCurrent] = f;
}

void VertexData::setTexCoordinate(float u, float v, unsigned int layer) {
    unsigned int layers = mTextureIndices.size();
    if (layer >= layers)
        return;
    float* data = writable(mTexCoordinates, mTexCoordinateType);
    if (!data)
        return;
    // The texture index list may have grown after initialize: stay inside the array.
    unsigned int offset = (layers * mCurrent + layer) * mNumTexCoord;
    if ((offset + 2) * kFloatSize > mTexCoordinates.getByteSize())
        return;
    float* t = data + offset;
    t[0] = u;
    t[1] = v;
}

}  // namespace Velun
