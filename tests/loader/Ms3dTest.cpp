#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometrySubobject.h"
#include "geometry/IndexedTriangles.h"
#include "loader/EngineFixture.h"
#include "plugins/loader/ms3d/Ms3dFile.h"
#include "scene/BoundingBox.h"

using namespace Velun;

namespace {

typedef ms3dtest::Model Model;

// Two triangles over four vertices, two groups, two materials.
Model twoTriangles() {
    Model model;
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

// Three triangles over five vertices, the last used by none; vertex 1 is shared with a
// different normal in triangles 0 and 1. The first group lists triangle 1 first; the second
// names no material.
Model corners() {
    Model model;
    model.vertices = {{0, 0, 0}, {2, 0, 0}, {0, 3, -1}, {2, 3, 0}, {100, 100, 100}};
    model.triangles = {ms3dtest::triangle(0, 1, 2), ms3dtest::triangle(1, 3, 2), ms3dtest::triangle(0, 1, 2)};
    model.triangles[0].s[1] = 1.0f;
    model.triangles[0].t[2] = 0.5f;
    model.triangles[0].n[1][0] = 1;
    model.triangles[0].n[1][2] = 0;
    model.triangles[1].n[0][1] = 1;
    model.triangles[1].n[0][2] = 0;
    model.groups = {{{1, 0}, 0}, {{2}, -1}};
    model.materials = {ms3dtest::material(1, 0.5f, 0.25f, "")};
    return model;
}

typedef EngineFixture Ms3dObjectLoaderTest;
const float kNaN = std::numeric_limits<float>::quiet_NaN(), kInf = std::numeric_limits<float>::infinity();

}  // namespace

TEST(Ms3dFileTest, RefusesEveryTruncationAndBadCountsIndicesAndValuesWithTheirCause) {
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

    const std::pair<std::size_t, const char*> cuts[] = {
        {12, "the file ends inside the header"},
        {at.vertices + 1, "the file ends before the vertex count"},
        {at.vertices + 2 + 15 * 3 + 7, "4 vertices need 60 bytes, but only 52 are left"},
        {at.triangles, "the file ends before the triangle count"},
        {at.triangles + 2 + 70, "2 triangles need 140 bytes, but only 70 are left"},
        {at.groups + 1, "the file ends before the group count"},
        {at.groups + 2 + 20, "the file ends inside group 0"},
        {at.groups + 2 + 35 + 2, "group 0 with 1 triangles needs 3 bytes, but only 2 are left"},
        {at.materials, "the file ends before the material count"},
        {at.materials + 2 + 361 + 360, "2 materials need 722 bytes, but only 721 are left"},
    };
    for (const auto& [size, error] : cuts) {
        readBytes(file, bytes, size);
        EXPECT_EQ(error, file.getError()) << "size " << size;
    }

    // Whole files with a count at `offset` bytes into a section replaced by `value`, and changed
    // models (an empty cause: still good).
    auto readError = [](const std::vector<unsigned char>& bytes) {
        Ms3dFile file;
        Ms3dFile::Result result = file.read(bytes.data(), bytes.size());
        EXPECT_EQ(file.getError().empty() ? Ms3dFile::Ok : Ms3dFile::Malformed, result);
        return file.getError();
    };
    typedef ms3dtest::Layout At;
    const std::tuple<std::size_t At::*, std::size_t, unsigned, const char*> counts[] = {
        {&At::vertices, 0, 0xFFFF, "65535 vertices need 983025 bytes, but only 1018 are left"},
        {&At::triangles, 0, 60000, "60000 triangles need 4200000 bytes, but only 956 are left"},
        {&At::groups, 35, 40000, "group 0 with 40000 triangles needs 80001 bytes, but only 779 are left"},
        {&At::groups, 0, 1000, "group 2 with 52480 triangles needs 104961 bytes, but only 703 are left"},
        {&At::materials, 0, 3, "3 materials need 1083 bytes, but only 736 are left"},
    };
    for (const auto& [section, offset, value, error] : counts) {
        At at;
        std::vector<unsigned char> bytes = ms3dtest::write(twoTriangles(), &at);
        bytes[at.*section + offset] = static_cast<unsigned char>(value & 0xFF);
        bytes[at.*section + offset + 1] = static_cast<unsigned char>(value >> 8);
        EXPECT_EQ(error, readError(bytes));
    }
    const std::pair<void (*)(Model&), const char*> damages[] = {
        {[](Model& m) { m.triangles[1].v[1] = 4; }, "triangle 1 uses vertex 4 (vertex count 4)"},
        {[](Model& m) { m.groups[1].triangles.push_back(2); }, "group 1 uses triangle 2 (triangle count 2)"},
        {[](Model& m) { m.groups[0].material = 2; }, "group 0 uses material 2 (material count 2)"},
        {[](Model& m) { m.groups[0].material = -2; }, "group 0 uses material -2 (material count 2)"},
        {[](Model& m) { m.groups[0].material = -1; }, ""},                       // no material: good
        {[](Model& m) { m.materials[1].texture = std::string(127, 'a'); }, ""},  // the longest good name
        {[](Model& m) { m.materials[1].texture = std::string(128, 'a'); },
         "the texture name of material 1 has no terminating zero"},
        {[](Model& m) { m.vertices[2].y = kNaN; }, "vertex 2 has a position that is not a finite number"},
        {[](Model& m) { m.vertices[0].z = -kInf; }, "vertex 0 has a position that is not a finite number"},
        {[](Model& m) { m.triangles[1].t[2] = kInf; },
         "triangle 1 has a texture coordinate that is not a finite number"},
        {[](Model& m) { m.triangles[0].s[0] = kNaN; },
         "triangle 0 has a texture coordinate that is not a finite number"},
    };
    for (const auto& [damage, error] : damages) {
        Model model = twoTriangles();
        damage(model);
        EXPECT_EQ(error, readError(ms3dtest::write(model)));
    }
}

TEST_F(Ms3dObjectLoaderTest, GivesEveryCornerItsOwnVertexWithItsNormal) {
    write("models/corners.ms3d", ms3dtest::write(corners()));
    std::unique_ptr<GeometryObject> object = create("corners.ms3d");
    ASSERT_TRUE(object);
    auto& geometry = dynamic_cast<GeometryData&>(*object->getSubobjectAt(0)->getGeometry(0));
    VertexData& vertices = *geometry.getIndexedData(0);
    EXPECT_EQ(9u, vertices.getCount());
    EXPECT_FALSE(vertices.isUsingColor());
    EXPECT_EQ(1u, vertices.getNumTexLayer());
    const float* positions = static_cast<const float*>(vertices.getVertices());
    EXPECT_EQ(2.0f, positions[3]);
    EXPECT_EQ(-1.0f, positions[8]);
    const float* st = static_cast<const float*>(vertices.getTexCoordinates(0));
    EXPECT_EQ(1.0f, st[2]);
    EXPECT_EQ(0.5f, st[5]);
    const float* normals = static_cast<const float*>(vertices.getNormals());
    EXPECT_EQ(1.0f, normals[1 * 3 + 0]);
    EXPECT_EQ(1.0f, normals[3 * 3 + 1]);
    EXPECT_EQ(0.0f, normals[3 * 3 + 0]);
    const Dorvan::Vector<GeometryElement*>& elements = geometry.getGroup(0)->getElementList();
    ASSERT_EQ(1u, elements.size());
    const IndexData& indices = dynamic_cast<IndexedTriangles&>(*elements.get(0)).getIndexList();
    ASSERT_EQ(6u, indices.getCount());
    EXPECT_EQ(3u, indices.getIndex(0));
    EXPECT_EQ(1u, indices.getIndex(4));

    // The box holds the used corners; the unused vertex does not widen it.
    const BoundingBox* box = dynamic_cast<const BoundingBox*>(geometry.getBoundingVolume());
    ASSERT_NE(nullptr, box);
    EXPECT_EQ(2.0f, box->getMax()[0]);
    EXPECT_EQ(3.0f, box->getMax()[1]);
    EXPECT_EQ(-1.0f, box->getMin()[2]);

    Dorvan::SharedPtr<Material> material = object->getDefaultMaterial(0);
    ASSERT_TRUE(material);
    EXPECT_EQ(Color(1, 0.5f, 0.25f, 1), material->getDiffuseMaterialColor());
    // An empty texture name leaves the material untextured, without complaint.
    EXPECT_EQ(0u, material->getTextureCount());
    EXPECT_EQ(0xFFFFFFFFu, geometry.getGroup(1)->getMaterialIndex());
    EXPECT_FALSE(object->getDefaultMaterial(0xFFFFFFFFu));
}

// The corners file with one byte changed and cut at `size`; version 3 is read too.
TEST_F(Ms3dObjectLoaderTest, RefusesOtherVersionsAndDamagedFilesWithOneLine) {
    const std::string version = "Error loading ms3d file: Unhandled file version. Only Milkshape3D Version "
                                "1.3 and 1.4 is supported.\n";
    ms3dtest::Layout at;
    const std::vector<unsigned char> good = ms3dtest::write(corners(), &at);
    const struct {
        const char* name;
        std::size_t at, size;  // no file for size 0
        unsigned char value;
        std::string line;
    } cases[] = {
        {"nothere.ms3d", 0, 0, 'M', "Error loading ms3d file .\\models\\nothere.ms3d\n"},
        {"v2.ms3d", 10, good.size(), 2, version},
        {"v5.ms3d", 10, good.size(), 5, version},
        {"magic.ms3d", 0, good.size(), 'm', "Error loading ms3d file: Not a valid Milkshape3D model file.\n"},
        {"cut.ms3d", 0, at.triangles + 2 + 30, 'M',
         "Error loading ms3d file .\\models\\cut.ms3d: 3 triangles need 210 bytes, but only 30 are left\n"},
        {"v3.ms3d", 10, good.size(), 3, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<unsigned char> bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(c.size));
        if (c.size) {
            bytes[c.at] = c.value;
            write(std::string("models/") + c.name, bytes);
        }
        std::string line;
        EXPECT_EQ(c.line.empty(), static_cast<bool>(create(c.name, &line)));
        EXPECT_EQ(c.line, line);
        EXPECT_EQ(c.line.empty(), objects().isLoaded(c.name));
    }
}
