#include "plugins/loader/ms3d/Ms3dFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "loader/Ms3dWriter.h"

using namespace Velun;

namespace {

// Two triangles over four vertices, two groups, two materials.
ms3dtest::Model twoTriangles() {
    ms3dtest::Model model;
    model.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    model.triangles = {ms3dtest::triangle(0, 1, 2), ms3dtest::triangle(2, 1, 3)};
    model.groups = {{{0}, 0}, {{1}, 1}};
    model.materials = {ms3dtest::material(1, 0, 0, ".\\red.png"), ms3dtest::material(0, 1, 0, "")};
    return model;
}

Ms3dFile::Result readBytes(Ms3dFile& file, const std::vector<unsigned char>& bytes, std::size_t size) {
    // A copy of exactly `size` bytes, so that the sanitizer sees any read beyond it.
    std::vector<unsigned char> block(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    return file.read(block.data(), block.size());
}

void putU16(std::vector<unsigned char>& bytes, std::size_t at, unsigned value) {
    bytes[at] = static_cast<unsigned char>(value & 0xFF);
    bytes[at + 1] = static_cast<unsigned char>(value >> 8);
}

}  // namespace

TEST(Ms3dFileTest, KeepsWhatTheFileHolds) {
    ms3dtest::Model model = twoTriangles();
    model.triangles[1].n[0][0] = 0.5f;
    model.triangles[1].s[2] = 0.25f;
    model.triangles[1].t[2] = 0.75f;
    model.vertices[3] = {4, 5, 6};
    std::vector<unsigned char> bytes = ms3dtest::write(model);
    Ms3dFile file;
    ASSERT_EQ(Ms3dFile::Ok, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ(4, file.getVersion());
    ASSERT_EQ(4u, file.getVertices().size());
    EXPECT_EQ(6.0f, file.getVertices()[3].position[2]);
    const Ms3dFile::Triangle& t = file.getTriangles()[1];
    EXPECT_EQ(2, t.vertexIndices[0]);
    EXPECT_EQ(3, t.vertexIndices[2]);
    EXPECT_EQ(0.5f, t.normals[0][0]);
    EXPECT_EQ(0.25f, t.s[2]);
    EXPECT_EQ(0.75f, t.t[2]);
    EXPECT_EQ(1, file.getGroups()[1].materialIndex);
    EXPECT_EQ(1u, file.getGroups()[1].triangleIndices[0]);
    EXPECT_EQ(".\\red.png", file.getMaterials()[0].texture);
    EXPECT_EQ("", file.getMaterials()[1].texture);
    EXPECT_EQ(1.0f, file.getMaterials()[0].diffuse[0]);
    EXPECT_EQ(0.2f, file.getMaterials()[0].ambient[0]);
    EXPECT_EQ(0.5f, file.getMaterials()[0].specular[1]);
}

TEST(Ms3dFileTest, RefusesEveryTruncation) {
    ms3dtest::Layout at;
    std::vector<unsigned char> bytes = ms3dtest::write(twoTriangles(), &at);
    Ms3dFile file;
    for (std::size_t size = 10; size < at.end; ++size) {
        EXPECT_EQ(Ms3dFile::Malformed, readBytes(file, bytes, size)) << "size " << size;
        EXPECT_FALSE(file.getError().empty());
        EXPECT_TRUE(file.getVertices().empty());
    }
    // What follows the materials is never read.
    EXPECT_EQ(Ms3dFile::Ok, readBytes(file, bytes, at.end));
    EXPECT_TRUE(file.getError().empty());

    readBytes(file, bytes, 12);
    EXPECT_EQ("the file ends inside the header", file.getError());
    readBytes(file, bytes, at.vertices + 1);
    EXPECT_EQ("the file ends before the vertex count", file.getError());
    readBytes(file, bytes, at.vertices + 2 + 15 * 3 + 7);
    EXPECT_EQ("4 vertices need 60 bytes, but only 52 are left", file.getError());
    readBytes(file, bytes, at.triangles);
    EXPECT_EQ("the file ends before the triangle count", file.getError());
    readBytes(file, bytes, at.triangles + 2 + 70);
    EXPECT_EQ("2 triangles need 140 bytes, but only 70 are left", file.getError());
    readBytes(file, bytes, at.groups + 1);
    EXPECT_EQ("the file ends before the group count", file.getError());
    readBytes(file, bytes, at.groups + 2 + 20);
    EXPECT_EQ("the file ends inside group 0", file.getError());
    readBytes(file, bytes, at.groups + 2 + 35 + 2);
    EXPECT_EQ("group 0 with 1 triangles needs 3 bytes, but only 2 are left", file.getError());
    readBytes(file, bytes, at.materials);
    EXPECT_EQ("the file ends before the material count", file.getError());
    readBytes(file, bytes, at.materials + 2 + 361 + 360);
    EXPECT_EQ("2 materials need 722 bytes, but only 721 are left", file.getError());
}

TEST(Ms3dFileTest, RefusesCountsLargerThanTheFile) {
    ms3dtest::Layout at;
    const std::vector<unsigned char> good = ms3dtest::write(twoTriangles(), &at);
    Ms3dFile file;

    std::vector<unsigned char> bytes = good;
    putU16(bytes, at.vertices, 0xFFFF);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ("65535 vertices need 983025 bytes, but only " + std::to_string(bytes.size() - at.vertices - 2) +
                  " are left",
              file.getError());

    bytes = good;
    putU16(bytes, at.triangles, 60000);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ(0u, file.getError().find("60000 triangles need 4200000 bytes"));

    bytes = good;
    putU16(bytes, at.groups + 2 + 33, 40000);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ(0u, file.getError().find("group 0 with 40000 triangles needs 80001 bytes"));

    bytes = good;
    putU16(bytes, at.groups, 1000);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));

    bytes = good;
    putU16(bytes, at.materials, 3);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ(0u, file.getError().find("3 materials need 1083 bytes"));
}

TEST(Ms3dFileTest, RefusesIndicesOutsideTheirTables) {
    Ms3dFile file;
    ms3dtest::Model model = twoTriangles();
    model.triangles[1].v[1] = 4;
    std::vector<unsigned char> bytes = ms3dtest::write(model);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ("triangle 1 uses vertex 4 (vertex count 4)", file.getError());

    model = twoTriangles();
    model.groups[1].triangles = {1, 2};
    bytes = ms3dtest::write(model);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ("group 1 uses triangle 2 (triangle count 2)", file.getError());

    model = twoTriangles();
    model.groups[0].material = 2;
    bytes = ms3dtest::write(model);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ("group 0 uses material 2 (material count 2)", file.getError());

    model.groups[0].material = -2;
    bytes = ms3dtest::write(model);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ("group 0 uses material -2 (material count 2)", file.getError());

    model.groups[0].material = -1;
    bytes = ms3dtest::write(model);
    EXPECT_EQ(Ms3dFile::Ok, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ(-1, file.getGroups()[0].materialIndex);
}

TEST(Ms3dFileTest, RefusesATextureNameWithoutZero) {
    Ms3dFile file;
    ms3dtest::Model model = twoTriangles();
    model.materials[1].texture = std::string(128, 'a');
    std::vector<unsigned char> bytes = ms3dtest::write(model);
    EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ("the texture name of material 1 has no terminating zero", file.getError());

    model.materials[1].texture = std::string(127, 'a');
    bytes = ms3dtest::write(model);
    ASSERT_EQ(Ms3dFile::Ok, file.read(bytes.data(), bytes.size()));
    EXPECT_EQ(127u, file.getMaterials()[1].texture.size());
}
