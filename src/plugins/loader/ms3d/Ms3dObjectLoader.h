#pragma once

#include <cstddef>

#include "geometry/ObjectLoader.h"
#include "velun_export.h"

namespace Velun {

class Ms3dFile;

// Reads Milkshape3D binary models (extension "ms3d", exactly so) into an
// Ms3dObjectFactory: the static mesh with one unshared vertex per triangle corner (so
// per-corner normals and texture coordinates survive), one group per file group with
// its material index, and one Material per file material with its ambient, diffuse and
// specular colours and its texture, looked up by the name the file stores (such as
// ".\jeep1.jpg", found below the textures directory). Skeleton and animation are not
// read. A file that is missing, not an MS3D file of version 1.3 or 1.4, or damaged in
// any count, index or string gives one error line on "loader.ms3d.objectloader" and a
// null factory.
class VELUN_EXPORT Ms3dObjectLoader : public ObjectLoader {
public:
    Ms3dObjectLoader();
    ~Ms3dObjectLoader() override;

    bool isInitialized() const override;
    bool initialize() override;
    bool shutdown() override;

    bool canLoad(NameMapper::ResourceInfo const& info) override;
    Dorvan::SharedPtr<ObjectFactory> load(NameMapper::ResourceInfo const& info) override;

    // The same from a file already in memory; `info` names the model (its name becomes
    // the factory's name, its path appears in error lines).
    Dorvan::SharedPtr<ObjectFactory> load(NameMapper::ResourceInfo const& info, void const* data,
                                          std::size_t size);

private:
    bool mInitialized;
};

}  // namespace Velun
