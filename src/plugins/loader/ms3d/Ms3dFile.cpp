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

// Reads a section's record count and checks that the file holds that many records of
// `recordSize` bytes (0 for records whose size each one gives).
bool readCount(Reader& in, const char* section, const char* records, std::size_t recordSize,
               unsigned int& count, std::string& error) {
    std::ostringstream text;
    if (in.left() < 2) {
        text << "the file ends before the " << section << " count";
        error = text.str();
        return false;
    }
    count = in.u16();
    if (in.left() < count * recordSize) {
        text << count << ' ' << records << " need " << count * recordSize << " bytes, but only " << in.left()
             << " are left";
        error = text.str();
        return false;
    }
    return true;
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

// Each step below reads one section at the cursor; false means `error` says why.

// The magic and the version; anything else than Ok ends the read.
Ms3dFile::Result readHeader(Reader& in, int& version, std::string& error) {
    if (in.left() < sizeof kMagic || std::memcmp(in.position(), kMagic, sizeof kMagic) != 0)
        return Ms3dFile::NotMs3d;
    if (in.left() < kHeaderSize) {
        error = "the file ends inside the header";
        return Ms3dFile::Malformed;
    }
    in.skip(sizeof kMagic);
    version = in.i32();
    if (version < 3 || version > 4)
        return Ms3dFile::UnsupportedVersion;
    return Ms3dFile::Ok;
}

bool readVertices(Reader& in, std::vector<Ms3dFile::Vertex>& vertices, std::string& error) {
    unsigned int count = 0;
    if (!readCount(in, "vertex", "vertices", kVertexSize, count, error))
        return false;
    vertices.resize(count);
    for (unsigned int v = 0; v < count; ++v) {
        in.skip(1);
        in.floats(vertices[v].position, 3);
        in.skip(2);  // bone id, reference count
        if (!allFinite(vertices[v].position, 3)) {
            error = notFinite("vertex", v, "position");
            return false;
        }
    }
    return true;
}

bool readTriangle(Reader& in, unsigned int t, unsigned int vertexCount, Ms3dFile::Triangle& triangle,
                  std::string& error) {
    in.skip(2);
    for (int corner = 0; corner < 3; ++corner) {
        triangle.vertexIndices[corner] = in.u16();
        if (triangle.vertexIndices[corner] >= vertexCount) {
            std::ostringstream text;
            text << "triangle " << t << " uses vertex " << triangle.vertexIndices[corner] << " (vertex count "
                 << vertexCount << ")";
            error = text.str();
            return false;
        }
    }
    for (int corner = 0; corner < 3; ++corner)
        in.floats(triangle.normals[corner], 3);
    in.floats(triangle.s, 3);
    in.floats(triangle.t, 3);
    if (!allFinite(triangle.s, 3) || !allFinite(triangle.t, 3)) {
        error = notFinite("triangle", t, "texture coordinate");
        return false;
    }
    in.skip(2);  // smoothing group, group index
    return true;
}

bool readTriangles(Reader& in, unsigned int vertexCount, std::vector<Ms3dFile::Triangle>& triangles,
                   std::string& error) {
    unsigned int count = 0;
    if (!readCount(in, "triangle", "triangles", kTriangleSize, count, error))
        return false;
    triangles.resize(count);
    for (unsigned int t = 0; t < count; ++t) {
        if (!readTriangle(in, t, vertexCount, triangles[t], error))
            return false;
    }
    return true;
}

bool readGroup(Reader& in, unsigned int g, unsigned int triangleCount, Ms3dFile::Group& group,
               std::string& error) {
    std::ostringstream text;
    if (in.left() < kGroupHeaderSize) {
        text << "the file ends inside group " << g;
        error = text.str();
        return false;
    }
    in.skip(1 + kNameSize);
    unsigned int count = in.u16();
    std::size_t bytes = count * 2 + 1;
    if (in.left() < bytes) {
        text << "group " << g << " with " << count << " triangles needs " << bytes << " bytes, but only "
             << in.left() << " are left";
        error = text.str();
        return false;
    }
    group.triangleIndices.resize(count);
    for (unsigned short& index : group.triangleIndices) {
        index = in.u16();
        if (index >= triangleCount) {
            text << "group " << g << " uses triangle " << index << " (triangle count " << triangleCount
                 << ")";
            error = text.str();
            return false;
        }
    }
    group.materialIndex = static_cast<signed char>(in.u8());
    return true;
}

bool readGroups(Reader& in, unsigned int triangleCount, std::vector<Ms3dFile::Group>& groups,
                std::string& error) {
    unsigned int count = 0;
    if (!readCount(in, "group", "groups", 0, count, error))
        return false;
    groups.resize(count);
    for (unsigned int g = 0; g < groups.size(); ++g) {
        if (!readGroup(in, g, triangleCount, groups[g], error))
            return false;
    }
    return true;
}

bool readMaterial(Reader& in, unsigned int m, Ms3dFile::Material& material, std::string& error) {
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
        error = text.str();
        return false;
    }
    material.texture.assign(name, static_cast<const char*>(end));
    in.skip(kTextureNameSize * 2);  // texture, alpha map
    return true;
}

bool readMaterials(Reader& in, std::vector<Ms3dFile::Material>& materials, std::string& error) {
    unsigned int count = 0;
    if (!readCount(in, "material", "materials", kMaterialSize, count, error))
        return false;
    materials.resize(count);
    for (unsigned int m = 0; m < count; ++m) {
        if (!readMaterial(in, m, materials[m], error))
            return false;
    }
    return true;
}

// Groups come before the materials in the file, so their material indices are checked
// once both are read; -1 means no material.
bool checkMaterialIndices(const std::vector<Ms3dFile::Group>& groups, unsigned int materialCount,
                          std::string& error) {
    for (unsigned int g = 0; g < groups.size(); ++g) {
        int index = groups[g].materialIndex;
        if (index < -1 || index >= static_cast<int>(materialCount)) {
            std::ostringstream text;
            text << "group " << g << " uses material " << index << " (material count " << materialCount
                 << ")";
            error = text.str();
            return false;
        }
    }
    return true;
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
    int version = 0;
    std::string error;
    Result header = readHeader(in, version, error);
    if (header == Malformed)
        return fail(error);
    if (header != Ok)
        return header;
    if (!readVertices(in, mVertices, error) || !readTriangles(in, mVertices.size(), mTriangles, error) ||
        !readGroups(in, mTriangles.size(), mGroups, error) || !readMaterials(in, mMaterials, error) ||
        !checkMaterialIndices(mGroups, mMaterials.size(), error))
        return fail(error);
    mVersion = version;
    return Ok;
}

}  // namespace Velun
