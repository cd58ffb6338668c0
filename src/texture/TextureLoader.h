#pragma once

#include "core/NameMapper.h"
#include "core/ResourceLoader.h"
#include "foundation/SharedPtr.h"
#include "velun_export.h"

namespace Velun {

class Texture1D;
class Texture2D;
class Texture3D;
class CubeMap;

// Makes whole textures from mapped names; register it with TextureManager. The manager
// asks canLoad... in registration order and lets the first that accepts load.
class VELUN_EXPORT TextureLoader : public ResourceLoader {
public:
    ~TextureLoader() override;

    virtual bool canLoad1D(const NameMapper::ResourceInfo& resource) = 0;
    virtual bool canLoad2D(const NameMapper::ResourceInfo& resource) = 0;
    virtual bool canLoad3D(const NameMapper::ResourceInfo& resource) = 0;
    virtual bool canLoadCubeMap(const NameMapper::ResourceInfo& resource) = 0;
    virtual Dorvan::SharedPtr<Texture1D> loadTexture1D(const NameMapper::ResourceInfo& resource) = 0;
    virtual Dorvan::SharedPtr<Texture2D> loadTexture2D(const NameMapper::ResourceInfo& resource) = 0;
    virtual Dorvan::SharedPtr<Texture3D> loadTexture3D(const NameMapper::ResourceInfo& resource) = 0;
    virtual Dorvan::SharedPtr<CubeMap> loadCubeMap(const NameMapper::ResourceInfo& resource) = 0;
};

}  // namespace Velun
