#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "velun_export.h"

namespace Velun {

// The static mesh of a Milkshape3D binary model (".ms3d", file versions 1.3 and 1.4) read
// from memory: vertex positions, triangles with per-corner normals and texture
// coordinates, groups and the colours and texture names of the materials. Skeleton and
// animation are not read. Every count, index and string is checked against the bytes
// that are there and against the table it indexes, so a damaged file is refused with a
// description of the fault and nothing outside the block is ever read.
class VELUN_EXPORT Ms3dFile {
public:
    enum Result {
        Ok = 0,
        // The block does not start with the magic "MS3D000000".
        NotMs3d = 1,
        // The version is not 3 or 4.
        UnsupportedVersion = 2,
        // A count, index or string does not fit the file; getError() tells which.
        Malformed = 3
    };

    struct Vertex {
        float position[3];
    };

    struct Triangle {
        unsigned short vertexIndices[3];
        float normals[3][3];
        float s[3];
        float t[3];
    };

    struct Group {
        std::vector<unsigned short> triangleIndices;
        // -1 for no material, otherwise below the material count.
        int materialIndex;
    };

    struct Material {
        float ambient[4];
        float diffuse[4];
        float specular[4];
        // As stored in the file, e.g. ".\jeep1.jpg"; empty for none.
        std::string texture;
    };

    Ms3dFile();

    // Replaces the contents with the model in `data`. On any result other than Ok the
    // tables are left empty.
    Result read(const void* data, std::size_t size);

    // What was wrong with the last block that read as Malformed, empty otherwise.
    const std::string& getError() const { return mError; }
    int getVersion() const { return mVersion; }

    const std::vector<Vertex>& getVertices() const { return mVertices; }
    const std::vector<Triangle>& getTriangles() const { return mTriangles; }
    const std::vector<Group>& getGroups() const { return mGroups; }
    const std::vector<Material>& getMaterials() const { return mMaterials; }

private:
    Result fail(const std::string& error);
    void clear();

    int mVersion;
    std::string mError;
    std::vector<Vertex> mVertices;
    std::vector<Triangle> mTriangles;
    std::vector<Group> mGroups;
    std::vector<Material> mMaterials;
};

}  // namespace Velun
