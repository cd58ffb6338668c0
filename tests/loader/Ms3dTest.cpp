#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <sstream>

#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"
#include "geometry/IndexedTriangles.h"
#include "loader/EngineFixture.h"
#include "loader/Ms3dWriter.h"
#include "plugins/loader/devil/DevILPlugin.h"
#include "plugins/loader/ms3d/Ms3dFile.h"
#include "plugins/loader/ms3d/Ms3dObjectFactory.h"
#include "plugins/loader/ms3d/Ms3dObjectLoader.h"
#include "plugins/loader/ms3d/Ms3dPlugin.h"
#include "scene/BoundingBox.h"
#include "texture/Texture2D.h"

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

namespace {

class Ms3dObjectLoaderTest : public EngineFixture {
protected:
    void SetUp() override {
        EngineFixture::SetUp();
        images.registerPlugin();
        models.registerPlugin();
    }
    void TearDown() override {
        models.unregisterPlugin();
        images.unregisterPlugin();
        EngineFixture::TearDown();
    }

    // The object of a name, and the log lines its loading wrote.
    std::unique_ptr<GeometryObject> create(const std::string& name, std::string* lines = nullptr) {
        testing::internal::CaptureStderr();
        ObjectNode* node = core.getResourceManager().getObjectManager().createObject(name);
        std::string written = testing::internal::GetCapturedStderr();
        if (lines)
            *lines = written;
        else
            EXPECT_EQ("", written);
        return std::unique_ptr<GeometryObject>(dynamic_cast<GeometryObject*>(node));
    }

    // Writes the model as models/<name> and loads it.
    std::unique_ptr<GeometryObject> createWritten(const std::string& name, const ms3dtest::Model& model,
                                                  std::string* lines = nullptr) {
        writeModel(name, ms3dtest::write(model));
        return create(name, lines);
    }

    DevILPlugin images;
    Ms3dPlugin models;
};

GeometryData& geometryOf(GeometryObject& object) {
    GeometryData* data = dynamic_cast<GeometryData*>(object.getSubobjectAt(0)->getGeometry(0).get());
    EXPECT_NE(nullptr, data);
    return *data;
}

const IndexData& indicesOf(GeometryData& geometry, unsigned int group) {
    const Dorvan::Vector<GeometryElement*>& elements = geometry.getGroup(group)->getElementList();
    EXPECT_EQ(1u, elements.size());
    IndexedTriangles* triangles = dynamic_cast<IndexedTriangles*>(elements.get(0));
    EXPECT_NE(nullptr, triangles);
    return triangles->getIndexList();
}

const float* normalOf(VertexData& vertices, unsigned int vertex) {
    return static_cast<const float*>(vertices.getNormals()) + vertex * 3;
}

// The loader's line; the object manager adds one of its own after it.
std::string firstLine(const std::string& lines) { return lines.substr(0, lines.find('\n') + 1); }

ms3dtest::Model oneTriangle() {
    ms3dtest::Model model;
    // The last vertex is used by no triangle.
    model.vertices = {{0, 0, 0}, {2, 0, 0}, {0, 3, -1}, {100, 100, 100}};
    model.triangles = {ms3dtest::triangle(0, 1, 2)};
    model.triangles[0].s[1] = 1.0f;
    model.triangles[0].t[2] = 0.5f;
    model.groups = {{{0}, 0}};
    model.materials = {ms3dtest::material(1, 0.5f, 0.25f, "")};
    return model;
}

}  // namespace

TEST_F(Ms3dObjectLoaderTest, GivesEveryCornerItsOwnVertex) {
    std::unique_ptr<GeometryObject> object = createWritten("one.ms3d", oneTriangle());
    ASSERT_TRUE(object);
    GeometryData& geometry = geometryOf(*object);
    VertexData& vertices = *geometry.getIndexedData(0);
    EXPECT_EQ(3u, vertices.getCount());
    EXPECT_TRUE(vertices.isUsingNormal());
    EXPECT_FALSE(vertices.isUsingColor());
    EXPECT_EQ(1u, vertices.getNumTexLayer());
    const float* positions = static_cast<const float*>(vertices.getVertices());
    EXPECT_EQ(2.0f, positions[3]);
    EXPECT_EQ(-1.0f, positions[8]);
    const float* st = static_cast<const float*>(vertices.getTexCoordinates(0));
    EXPECT_EQ(1.0f, st[2]);
    EXPECT_EQ(0.5f, st[5]);
    const IndexData& indices = indicesOf(geometry, 0);
    ASSERT_EQ(3u, indices.getCount());
    EXPECT_EQ(0u, indices.getIndex(0));
    EXPECT_EQ(2u, indices.getIndex(2));

    // The box holds the used corners; the unused vertex does not widen it.
    const BoundingBox* box = dynamic_cast<const BoundingBox*>(geometry.getBoundingVolume());
    ASSERT_NE(nullptr, box);
    EXPECT_EQ(2.0f, box->getMax()[0]);
    EXPECT_EQ(3.0f, box->getMax()[1]);
    EXPECT_EQ(-1.0f, box->getMin()[2]);
    EXPECT_EQ(nullptr, geometry.getPhysicsVolume());

    Dorvan::SharedPtr<Material> material = object->getDefaultMaterial(0);
    ASSERT_TRUE(material);
    EXPECT_EQ(Color(1, 0.5f, 0.25f, 1), material->getDiffuseMaterialColor());
    // An empty texture name leaves the material untextured, without complaint.
    EXPECT_EQ(0u, material->getTextureCount());
}

TEST_F(Ms3dObjectLoaderTest, KeepsEachCornersNormal) {
    ms3dtest::Model model;
    model.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    model.triangles = {ms3dtest::triangle(0, 1, 2), ms3dtest::triangle(1, 3, 2)};
    // Vertex 1 is shared with a different normal in each triangle.
    model.triangles[0].n[1][0] = 1;
    model.triangles[0].n[1][2] = 0;
    model.triangles[1].n[0][1] = 1;
    model.triangles[1].n[0][2] = 0;
    model.groups = {{{1, 0}, -1}};
    std::unique_ptr<GeometryObject> object = createWritten("shared.ms3d", model);
    ASSERT_TRUE(object);
    GeometryData& geometry = geometryOf(*object);
    VertexData& vertices = *geometry.getIndexedData(0);
    ASSERT_EQ(6u, vertices.getCount());
    const IndexData& indices = indicesOf(geometry, 0);
    ASSERT_EQ(6u, indices.getCount());
    // The group lists triangle 1 first.
    unsigned int fromSecond = indices.getIndex(0);
    unsigned int fromFirst = indices.getIndex(4);
    EXPECT_EQ(3u, fromSecond);
    EXPECT_EQ(1u, fromFirst);
    EXPECT_EQ(1.0f, normalOf(vertices, fromFirst)[0]);
    EXPECT_EQ(1.0f, normalOf(vertices, fromSecond)[1]);
    EXPECT_EQ(0.0f, normalOf(vertices, fromSecond)[0]);

    // Material index -1: the group names no material.
    EXPECT_EQ(0xFFFFFFFFu, geometry.getGroup(0)->getMaterialIndex());
    EXPECT_FALSE(object->getDefaultMaterial(0xFFFFFFFFu));
}

TEST_F(Ms3dObjectLoaderTest, RefusesWhatIsNotAVersionOneThreeOrFourModel) {
    std::string lines;
    EXPECT_FALSE(create("nothere.ms3d", &lines));
    EXPECT_EQ(0u, lines.find("Error loading ms3d file .\\models\\nothere.ms3d\n"));

    ms3dtest::Model model = oneTriangle();
    for (int version : {2, 5}) {
        model.version = version;
        std::string name = "v" + std::to_string(version) + ".ms3d";
        EXPECT_FALSE(createWritten(name, model, &lines));
        EXPECT_EQ(0u, lines.find(
                          "Error loading ms3d file: Unhandled file version. Only Milkshape3D Version 1.3 and "
                          "1.4 is supported.\n"));
    }
    model.version = 3;
    EXPECT_TRUE(createWritten("v3.ms3d", model));

    std::vector<unsigned char> bytes = ms3dtest::write(oneTriangle());
    bytes[0] = 'm';
    writeModel("magic.ms3d", bytes);
    EXPECT_FALSE(create("magic.ms3d", &lines));
    EXPECT_EQ(0u, lines.find("Error loading ms3d file: Not a valid Milkshape3D model file.\n"));
}

TEST_F(Ms3dObjectLoaderTest, RefusesDamagedFilesWithOneLine) {
    ms3dtest::Layout at;
    std::vector<unsigned char> bytes = ms3dtest::write(oneTriangle(), &at);
    bytes.resize(at.triangles + 2 + 30);
    writeModel("cut.ms3d", bytes);
    std::string lines;
    EXPECT_FALSE(create("cut.ms3d", &lines));
    EXPECT_EQ(
        "Error loading ms3d file .\\models\\cut.ms3d: 1 triangles need 70 bytes, but only 30 are left\n",
        firstLine(lines));

    ms3dtest::Model model = oneTriangle();
    model.triangles[0].v[2] = 9;
    EXPECT_FALSE(createWritten("index.ms3d", model, &lines));
    EXPECT_EQ("Error loading ms3d file .\\models\\index.ms3d: triangle 0 uses vertex 9 (vertex count 4)\n",
              firstLine(lines));
    EXPECT_FALSE(core.getResourceManager().getObjectManager().isLoaded("index.ms3d"));
}

TEST(Ms3dFileTest, RefusesPositionsAndTextureCoordinatesThatAreNotFinite) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    struct Case {
        void (*damage)(ms3dtest::Model&, float);
        float value;
        const char* error;
    };
    const Case cases[] = {
        {[](ms3dtest::Model& m, float v) { m.vertices[2].y = v; }, nan,
         "vertex 2 has a position that is not a finite number"},
        {[](ms3dtest::Model& m, float v) { m.vertices[0].z = v; }, -inf,
         "vertex 0 has a position that is not a finite number"},
        {[](ms3dtest::Model& m, float v) { m.triangles[1].t[2] = v; }, inf,
         "triangle 1 has a texture coordinate that is not a finite number"},
        {[](ms3dtest::Model& m, float v) { m.triangles[0].s[0] = v; }, nan,
         "triangle 0 has a texture coordinate that is not a finite number"},
    };
    for (const Case& c : cases) {
        ms3dtest::Model model = twoTriangles();
        c.damage(model, c.value);
        std::vector<unsigned char> bytes = ms3dtest::write(model);
        Ms3dFile file;
        EXPECT_EQ(Ms3dFile::Malformed, file.read(bytes.data(), bytes.size()));
        EXPECT_EQ(c.error, file.getError());
    }
}
