#pragma once

// Small models for the object tests: a box geometry built by hand, and a loader of the
// tests' own for a tiny text format (".tmod") that counts how often it parses.

#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "core/NativePath.h"
#include "core/VelunCore.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryDataGroup.h"
#include "geometry/GeometryObjectFactory.h"
#include "geometry/IndexedTriangles.h"
#include "geometry/ObjectLoader.h"
#include "geometry/VertexData.h"
#include "material/Material.h"
#include "scene/BoundingBox.h"

namespace ObjectTestModels {

using Dorvan::SharedPtr;

// Base of fixtures that make nodes: node ids come from the started engine. As a base
// class it starts the engine before the fixture's members are built and shuts it down
// after they are gone.
class EngineTest : public ::testing::Test {
protected:
    EngineTest() { Velun::VelunCore::getSingleton().startup(); }
    ~EngineTest() override {
        if (Velun::VelunCore::getSingleton().findResourceManager())
            Velun::VelunCore::getSingleton().shutdown();
    }
};

// An axis-aligned box from lo to hi: eight vertices, twelve triangles in one group of
// material slot 0, and its bounding box.
inline SharedPtr<Velun::Geometry> makeBox(Velun::Point const& lo, Velun::Point const& hi,
                                          std::string const& name = "box") {
    Velun::GeometryData* geometry = new Velun::GeometryData(name);
    SharedPtr<Velun::VertexData> vertices(new Velun::VertexData());
    vertices->setUseVertex(true);
    vertices->initialize(8, 8);
    for (int i = 0; i < 8; ++i) {
        vertices->addVertex();
        vertices->setVertex(i & 4 ? hi[0] : lo[0], i & 2 ? hi[1] : lo[1], i & 1 ? hi[2] : lo[2]);
    }
    geometry->setIndexedVertexData(vertices);
    Velun::IndexedTriangles* triangles = new Velun::IndexedTriangles(36);
    unsigned int const faces[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                      {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
    for (int f = 0; f < 6; ++f) {
        triangles->addTriangle(faces[f][0], faces[f][1], faces[f][2]);
        triangles->addTriangle(faces[f][0], faces[f][2], faces[f][3]);
    }
    geometry->createGroup().addElement(*triangles);
    geometry->setBoundingVolume(new Velun::BoundingBox(lo, hi));
    return SharedPtr<Velun::Geometry>(geometry);
}

// Reads files of lines "v x y z" (a vertex), "t a b c" (a triangle) and "m r g b" (a
// material with that diffuse colour). A file it cannot open is logged on the channel
// "test.loader" and gives no factory.
class TextModelLoader : public Velun::ObjectLoader {
public:
    explicit TextModelLoader(std::string const& fileType = "tmod", bool initializes = true)
        : mFileType(fileType), mInitializes(initializes), mInitialized(false), mLoadCount(0),
          mCanLoadCount(0) {}

    bool isInitialized() const override { return mInitialized; }
    bool initialize() override {
        mInitialized = mInitializes;
        return mInitialized;
    }
    bool shutdown() override {
        mInitialized = false;
        return true;
    }

    bool canLoad(Velun::NameMapper::ResourceInfo const& info) override {
        ++mCanLoadCount;
        return info.getFileType() == mFileType;
    }

    SharedPtr<Velun::ObjectFactory> load(Velun::NameMapper::ResourceInfo const& info) override {
        ++mLoadCount;
        std::ifstream in(Velun::toNativePath(info.getFileName()).c_str());
        if (!in) {
            Velun::VelunCore::getLogger("test.loader")->error("Could not open " + info.getFileName());
            return SharedPtr<Velun::ObjectFactory>();
        }
        Velun::GeometryData* geometry = new Velun::GeometryData(info.getName());
        SharedPtr<Velun::VertexData> vertices(new Velun::VertexData());
        vertices->setUseVertex(true);
        vertices->initialize(8, 8);
        Velun::BoundingBox* box = new Velun::BoundingBox();
        Velun::IndexedTriangles* triangles = new Velun::IndexedTriangles();
        Dorvan::Vector<SharedPtr<Velun::Material>> materials;
        std::string line;
        while (std::getline(in, line)) {
            std::istringstream fields(line);
            std::string tag;
            fields >> tag;
            if (tag == "v") {
                float x = 0, y = 0, z = 0;
                fields >> x >> y >> z;
                vertices->addVertex();
                vertices->setVertex(x, y, z);
                box->merge(Velun::Point(x, y, z));
            } else if (tag == "t") {
                unsigned int a = 0, b = 0, c = 0;
                fields >> a >> b >> c;
                triangles->addTriangle(a, b, c);
            } else if (tag == "m") {
                float r = 0, g = 0, b = 0;
                fields >> r >> g >> b;
                SharedPtr<Velun::Material> material(new Velun::Material());
                material->setDiffuseMaterialColor(Velun::Color(r, g, b, 1.0f));
                materials.add(material);
            }
        }
        geometry->setIndexedVertexData(vertices);
        geometry->createGroup().addElement(*triangles);
        geometry->setBoundingVolume(box);
        return SharedPtr<Velun::ObjectFactory>(new Velun::GeometryObjectFactory(
            info.getName(), SharedPtr<Velun::Geometry>(geometry), materials));
    }

    int getLoadCount() const { return mLoadCount; }
    int getCanLoadCount() const { return mCanLoadCount; }

private:
    std::string mFileType;
    bool mInitializes;
    bool mInitialized;
    int mLoadCount;
    int mCanLoadCount;
};

}  // namespace ObjectTestModels
