#include "plugins/loader/ms3d/Ms3dFile.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <sstream>

namespace Velun {

namespace {

const char kMagic[10] = {'M', 'S', '3', 'D', '0', '0', '0', '0', '0', '0'};
const std::size_t kHeaderSize = 14;
const std::size_t kVertexSize = 15;
const std::size_t kTriangleSize = 70;
// flags, name, triangle count
const std::size_t kGroupHeaderSize = 1 + 32 + 2;
const std::size_t kMaterialSize = 361;
const std::size_t kNameSize = 32;
const std::size_t kTextureNameSize = 128;

// A cursor over the block. Callers check `left()` before reading: the reads
// themselves assume the bytes are there.
class Reader {
public:
    Reader(const unsigned char* data, std::size_t size) : mData(data), mEnd(data + size) {}

    std::size_t left() const { return static_cast<std::size_t>(mEnd - mData); }
    void skip(std::size_t bytes) { mData += bytes; }
    const unsigned char* position() const { return mData; }

    std::uint8_t u8() { return *mData++; }
    std::uint16_t u16() {
        std::uint16_t v = static_cast<std::uint16_t>(mData[0] | (mData[1] << 8));
        mData += 2;
        return v;
    }
    std::uint32_t u32() {
        std::uint32_t v = static_cast<std::uint32_t>(mData[0]) | (static_cast<std::uint32_t>(mData[1]) << 8) |
                          (static_cast<std::uint32_t>(mData[2]) << 16) |
                          (static_cast<std::uint32_t>(mData[3]) << 24);
        mData += 4;
        return v;
    }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
    float f32() {
        std::uint32_t bits = u32();
        float f;
        std::memcpy(&f, &bits, sizeof f);
        return f;
    }
    void floats(float* out, int count) {
        for (int i = 0; i < count; ++i)
            out[i] = f32();
    }

private:
    const unsigned char* mData;
    const unsigned char* mEnd;
};

std::string countMissing(const char* section) {
    std::ostringstream text;
    text << "the file ends before the " << section << " count";
    return text.str();
}

std::string recordsMissing(unsigned int count, const char* what, std::size_t bytes, std::size_t left) {
    std::ostringstream text;
    text << count << ' ' << what << " need " << bytes << " bytes, but only " << left << " are left";
    return text.str();
}

// Normals need no check: the vertex data stores one without a direction as +z.
bool allFinite(const float* values, int count) {
    for (int i = 0; i < count; ++i) {
        if (!std::isfinite(values[i]))
            return false;
    }
    return true;
}

std::string notFinite(const char* what, unsigned int index, const char* field) {
    std::ostringstream text;
    text << what << ' ' << index << " has a " << field << " that is not a finite number";
    return text.str();
}

}  // namespace

Ms3dFile::Ms3dFile() : mVersion(0) {}

void Ms3dFile::clear() {
    mVersion = 0;
    mError.clear();
    mVertices.clear();
    mTriangles.clear();
    mGroups.clear();
    mMaterials.clear();
}

Ms3dFile::Result Ms3dFile::fail(const std::string& error) {
    clear();
    mError = error;
    return Malformed;
}

Ms3dFile::Result Ms3dFile::read(const void* data, std::size_t size) {
    clear();
    Reader in(static_cast<const unsigned char*>(data), size);

    if (size < sizeof kMagic || std::memcmp(in.position(), kMagic, sizeof kMagic) != 0)
        return NotMs3d;
    if (size < kHeaderSize)
        return fail("the file ends inside the header");
    in.skip(sizeof kMagic);
    int version = in.i32();
    if (version < 3 || version > 4)
        return UnsupportedVersion;

    if (in.left() < 2)
        return fail(countMissing("vertex"));
    unsigned int vertexCount = in.u16();
    if (in.left() < vertexCount * kVertexSize)
        return fail(recordsMissing(vertexCount, "vertices", vertexCount * kVertexSize, in.left()));
    mVertices.resize(vertexCount);
    for (unsigned int v = 0; v < vertexCount; ++v) {
        in.skip(1);
        in.floats(mVertices[v].position, 3);
        in.skip(2);  // bone id, reference count
        if (!allFinite(mVertices[v].position, 3))
            return fail(notFinite("vertex", v, "position"));
    }

    if (in.left() < 2)
        return fail(countMissing("triangle"));
    unsigned int triangleCount = in.u16();
    if (in.left() < triangleCount * kTriangleSize)
        return fail(recordsMissing(triangleCount, "triangles", triangleCount * kTriangleSize, in.left()));
    mTriangles.resize(triangleCount);
    for (unsigned int t = 0; t < triangleCount; ++t) {
        Triangle& triangle = mTriangles[t];
        in.skip(2);
        for (int corner = 0; corner < 3; ++corner) {
            triangle.vertexIndices[corner] = in.u16();
            if (triangle.vertexIndices[corner] >= vertexCount) {
                std::ostringstream text;
                text << "triangle " << t << " uses vertex " << triangle.vertexIndices[corner]
                     << " (vertex count " << vertexCount << ")";
                return fail(text.str());
            }
        }
        for (int corner = 0; corner < 3; ++corner)
            in.floats(triangle.normals[corner], 3);
        in.floats(triangle.s, 3);
        in.floats(triangle.t, 3);
        if (!allFinite(triangle.s, 3) || !allFinite(triangle.t, 3))
            return fail(notFinite("triangle", t, "texture coordinate"));
        in.skip(2);  // smoothing group, group index
    }

    if (in.left() < 2)
        return fail(countMissing("group"));
    unsigned int groupCount = in.u16();
    mGroups.resize(groupCount);
    for (unsigned int g = 0; g < groupCount; ++g) {
        Group& group = mGroups[g];
        if (in.left() < kGroupHeaderSize) {
            std::ostringstream text;
            text << "the file ends inside group " << g;
            return fail(text.str());
        }
        in.skip(1 + kNameSize);
        unsigned int count = in.u16();
        std::size_t bytes = count * 2 + 1;
        if (in.left() < bytes) {
            std::ostringstream text;
            text << "group " << g << " with " << count << " triangles needs " << bytes << " bytes, but only "
                 << in.left() << " are left";
            return fail(text.str());
        }
        group.triangleIndices.resize(count);
        for (unsigned short& index : group.triangleIndices) {
            index = in.u16();
            if (index >= triangleCount) {
                std::ostringstream text;
                text << "group " << g << " uses triangle " << index << " (triangle count " << triangleCount
                     << ")";
                return fail(text.str());
            }
        }
        group.materialIndex = static_cast<signed char>(in.u8());
    }

    if (in.left() < 2)
        return fail(countMissing("material"));
    unsigned int materialCount = in.u16();
    if (in.left() < materialCount * kMaterialSize)
        return fail(recordsMissing(materialCount, "materials", materialCount * kMaterialSize, in.left()));
    mMaterials.resize(materialCount);
    for (unsigned int m = 0; m < materialCount; ++m) {
        Material& material = mMaterials[m];
        in.skip(kNameSize);
        in.floats(material.ambient, 4);
        in.floats(material.diffuse, 4);
        in.floats(material.specular, 4);
        in.skip(16 + 4 + 4 + 1);  // emissive, shininess, transparency, mode
        const char* name = reinterpret_cast<const char*>(in.position());
        const void* end = std::memchr(name, 0, kTextureNameSize);
        if (!end) {
            std::ostringstream text;
            text << "the texture name of material " << m << " has no terminating zero";
            return fail(text.str());
        }
        material.texture.assign(name, static_cast<const char*>(end));
        in.skip(kTextureNameSize * 2);  // texture, alpha map
    }

    for (unsigned int g = 0; g < groupCount; ++g) {
        int index = mGroups[g].materialIndex;
        if (index < -1 || index >= static_cast<int>(materialCount)) {
            std::ostringstream text;
            text << "group " << g << " uses material " << index << " (material count " << materialCount
                 << ")";
            return fail(text.str());
        }
    }

    mVersion = version;
    return Ok;
}

}  // namespace Velun
