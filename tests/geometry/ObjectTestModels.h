#pragma once

// Small models for the object tests: a box geometry, and a loader of the tests' own for
// ".tmod" files that counts how often it loads.

#include <string>

#include "core/VelunCore.h"
#include "geometry/GeometryData.h"
#include "geometry/GeometryObjectFactory.h"
#include "geometry/ObjectLoader.h"
#include "material/Material.h"
#include "scene/BoundingBox.h"

namespace ObjectTestModels {

using Dorvan::SharedPtr;

// A geometry of the given name that holds nothing but a unit bounding box.
inline SharedPtr<Velun::Geometry> makeBox(std::string const& name = "box") {
    Velun::GeometryData* geometry = new Velun::GeometryData(name);
    geometry->setBoundingVolume(new Velun::BoundingBox(Velun::Point(0, 0, 0), Velun::Point(1, 1, 1)));
    return SharedPtr<Velun::Geometry>(geometry);
}

// Loads files of type "tmod": each gives a unit box and two materials, red and blue. A name
// beginning with "missing" is logged on the channel "test.loader" and gives no factory.
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
        if (info.getName().rfind("missing", 0) == 0) {
            Velun::VelunCore::getLogger("test.loader")->error("Could not open " + info.getFileName());
            return SharedPtr<Velun::ObjectFactory>();
        }
        Dorvan::Vector<SharedPtr<Velun::Material>> materials;
        for (const Velun::Color& colour : {Velun::Color(1, 0, 0, 1), Velun::Color(0, 0, 1, 1)}) {
            materials.add(SharedPtr<Velun::Material>(new Velun::Material()));
            materials.get(materials.size() - 1)->setDiffuseMaterialColor(colour);
        }
        return SharedPtr<Velun::ObjectFactory>(
            new Velun::GeometryObjectFactory(info.getName(), makeBox(info.getName()), materials));
    }

    bool mInitialized = false;
    int mLoadCount = 0, mCanLoadCount = 0;
};

}  // namespace ObjectTestModels
