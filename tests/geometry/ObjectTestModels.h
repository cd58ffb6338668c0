#pragma once

// Small models for the object tests: a box geometry built by hand, and a loader of the
// tests' own for ".tmod" files that counts how often it loads.

#include <fstream>
#include <string>

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

// Loads files of type "tmod": each gives a unit box and two materials, red and blue. A file
// it cannot open is logged on the channel "test.loader" and gives no factory.
class TextModelLoader : public Velun::ObjectLoader {
public:
    bool isInitialized() const override { return mInitialized; }
    bool initialize() override { return mInitialized = true; }
    bool shutdown() override { return !(mInitialized = false); }
    bool canLoad(Velun::NameMapper::ResourceInfo const& info) override {
        ++mCanLoadCount;
        return info.getFileType() == "tmod";
    }
    SharedPtr<Velun::ObjectFactory> load(Velun::NameMapper::ResourceInfo const& info) override {
        ++mLoadCount;
        if (!std::ifstream(Velun::toNativePath(info.getFileName()).c_str())) {
            Velun::VelunCore::getLogger("test.loader")->error("Could not open " + info.getFileName());
            return SharedPtr<Velun::ObjectFactory>();
        }
        Dorvan::Vector<SharedPtr<Velun::Material>> materials;
        for (const Velun::Color& colour : {Velun::Color(1, 0, 0, 1), Velun::Color(0, 0, 1, 1)}) {
            materials.add(SharedPtr<Velun::Material>(new Velun::Material()));
            materials.get(materials.size() - 1)->setDiffuseMaterialColor(colour);
        }
        return SharedPtr<Velun::ObjectFactory>(new Velun::GeometryObjectFactory(
            info.getName(), makeBox(Velun::Point(0, 0, 0), Velun::Point(1, 1, 1), info.getName()),
            materials));
    }

    int getLoadCount() const { return mLoadCount; }
    int getCanLoadCount() const { return mCanLoadCount; }

private:
    bool mInitialized = false;
    int mLoadCount = 0;
    int mCanLoadCount = 0;
};

}  // namespace ObjectTestModels
