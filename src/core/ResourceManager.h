#pragma once

#include "velun_export.h"

namespace Velun {

class MaterialManager;
class TextureManager;
class GeometryManager;
class ObjectManager;
class SoundManager;

// Owns the five resource managers, made in the order material, texture, geometry,
// object, sound and destroyed in the same order. Also hands out resource provider ids:
// a provider (a render context) takes one at its creation and files its per-resource
// data under it in every ResourceContainer. The first provider gets 0; ids are not
// reused.
class VELUN_EXPORT ResourceManager {
public:
    ResourceManager();
    virtual ~ResourceManager();

    MaterialManager& getMaterialManager();
    TextureManager& getTextureManager();
    GeometryManager& getGeometryManager();
    ObjectManager& getObjectManager();
    SoundManager& getSoundManager();

    // The managers as pointers, null once the destructor has destroyed them; for
    // resources released while the resource manager is ending.
    TextureManager* findTextureManager() const { return mTextureManager; }
    GeometryManager* findGeometryManager() const { return mGeometryManager; }

    unsigned int createResourceProviderId();
    // Ids are not reused: this does nothing.
    void returnResourceProviderId(unsigned int id);

private:
    ResourceManager(const ResourceManager&) = delete;
    ResourceManager& operator=(const ResourceManager&) = delete;

    MaterialManager* mMaterialManager;
    TextureManager* mTextureManager;
    GeometryManager* mGeometryManager;
    ObjectManager* mObjectManager;
    SoundManager* mSoundManager;
    unsigned int mNextProviderId;
};

}  // namespace Velun
