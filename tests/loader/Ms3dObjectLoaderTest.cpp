#include "plugins/loader/ms3d/Ms3dObjectLoader.h"

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"
#include "geometry/IndexedTriangles.h"
#include "loader/EngineFixture.h"
#include "plugins/loader/devil/DevILPlugin.h"
#include "plugins/loader/ms3d/Ms3dObjectFactory.h"
#include "plugins/loader/ms3d/Ms3dPlugin.h"
#include "scene/BoundingBox.h"
#include "texture/Texture2D.h"

using namespace Velun;

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

TEST_F(Ms3dObjectLoaderTest, LoadsTheTexturedJeep) {
    std::unique_ptr<GeometryObject> jeep = create("jeep1.ms3d");
    ASSERT_TRUE(jeep);
    ASSERT_EQ(1u, jeep->getSubobjectCount());
    GeometryData& geometry = geometryOf(*jeep);
    EXPECT_EQ("jeep1.ms3d", geometry.getName());
    ASSERT_EQ(7u, geometry.getElementGroups().size());
    VertexData& vertices = *geometry.getIndexedData(0);
    EXPECT_EQ(3u * 2032u, vertices.getCount());
    const unsigned int groupTriangles[7] = {192, 192, 192, 192, 36, 36, 1192};
    unsigned int indices = 0;
    for (unsigned int g = 0; g < 7; ++g) {
        EXPECT_EQ(groupTriangles[g] * 3, indicesOf(geometry, g).getCount());
        EXPECT_EQ(0u, geometry.getGroup(g)->getMaterialIndex());
        indices += indicesOf(geometry, g).getCount();
    }
    EXPECT_EQ(3u * 2032u, indices);

    const BoundingBox* box = dynamic_cast<const BoundingBox*>(geometry.getBoundingVolume());
    ASSERT_NE(nullptr, box);
    EXPECT_NEAR(-5.529f, box->getMin()[0], 1e-3f);
    EXPECT_NEAR(7.629f, box->getMax()[1], 1e-3f);
    EXPECT_NEAR(-8.537f, box->getMin()[2], 1e-3f);

    Dorvan::SharedPtr<Material> material = jeep->getDefaultMaterial(0);
    ASSERT_TRUE(material);
    EXPECT_EQ(Color(0.2f, 0.2f, 0.2f, 1), material->getAmbientMaterialColor());
    EXPECT_EQ(Color(0.8f, 0.8f, 0.8f, 1), material->getDiffuseMaterialColor());
    EXPECT_EQ(Color(0, 0, 0, 1), material->getSpecularMaterialColor());
    EXPECT_FALSE(jeep->getDefaultMaterial(1));

    // ".\jeep1.jpg" is looked up as stored and found below textures/.
    Dorvan::SharedPtr<Texture> texture = material->getTexture(0);
    ASSERT_TRUE(texture);
    EXPECT_TRUE(texture->doGenerateMipMaps());
    EXPECT_EQ(Texture::Linear, texture->getMagFilter());
    Dorvan::SharedPtr<TextureSource> image = texture->getTextureSource(0, 0);
    ASSERT_TRUE(image);
    EXPECT_EQ(512u, image->getTextureInfo().getWidth());
    EXPECT_EQ(512u, image->getTextureInfo().getHeight());
    EXPECT_EQ(Color::Rgb, image->getTextureInfo().getColorFormat());
    EXPECT_EQ(image, core.getResourceManager().getTextureManager().getTextureSource(".\\jeep1.jpg"));
}

TEST_F(Ms3dObjectLoaderTest, ObjectsOfOneFileShareGeometryAndMaterials) {
    std::unique_ptr<GeometryObject> first = create("jeep1.ms3d");
    std::unique_ptr<GeometryObject> second = create("jeep1.ms3d");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(first->getSubobjectAt(0)->getGeometry(0), second->getSubobjectAt(0)->getGeometry(0));
    EXPECT_EQ(first->getDefaultMaterial(0), second->getDefaultMaterial(0));
    Dorvan::SharedPtr<ObjectFactory> factory =
        core.getResourceManager().getObjectManager().getObjectFactory("jeep1.ms3d");
    ASSERT_TRUE(factory);
    EXPECT_NE(nullptr, dynamic_cast<Ms3dObjectFactory*>(factory.get()));
    EXPECT_EQ("jeep1.ms3d", factory->getName());
}

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
