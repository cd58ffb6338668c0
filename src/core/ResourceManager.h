#pragma once

#include "velun_export.h"

namespace Velun {

class MaterialManager;
class TextureManager;
class GeometryManager;
class ObjectManager;
class SoundManager;

// Owns the five resource managers, made in the order material, texture, geometry,
// object, sound and destroyed in the same order.
class VELUN_EXPORT ResourceManager {
public:
    ResourceManager();
    virtual ~ResourceManager();

    MaterialManager& getMaterialManager();
    TextureManager& getTextureManager();
    GeometryManager& getGeometryManager();
    ObjectManager& getObjectManager();
    SoundManager& getSoundManager();

private:
    ResourceManager(const ResourceManager&) = delete;
    ResourceManager& operator=(const ResourceManager&) = delete;

    MaterialManager* mMaterialManager;
    TextureManager* mTextureManager;
    GeometryManager* mGeometryManager;
    ObjectManager* mObjectManager;
    SoundManager* mSoundManager;
};

}  // namespace Velun
