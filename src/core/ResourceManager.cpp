#include "core/ResourceManager.h"

#include "geometry/GeometryManager.h"
#include "geometry/ObjectManager.h"
#include "material/MaterialManager.h"
#include "sound/SoundManager.h"
#include "texture/TextureManager.h"

namespace Velun {

ResourceManager::ResourceManager()
    : mMaterialManager(new MaterialManager()), mTextureManager(new TextureManager()),
      mGeometryManager(new GeometryManager()), mObjectManager(new ObjectManager()),
      mSoundManager(new SoundManager()), mNextProviderId(0) {}

ResourceManager::~ResourceManager() {
    delete mMaterialManager;
    mMaterialManager = nullptr;
    delete mTextureManager;
    mTextureManager = nullptr;
    delete mGeometryManager;
    mGeometryManager = nullptr;
    delete mObjectManager;
    mObjectManager = nullptr;
    delete mSoundManager;
    mSoundManager = nullptr;
}

MaterialManager& ResourceManager::getMaterialManager() { return *mMaterialManager; }
TextureManager& ResourceManager::getTextureManager() { return *mTextureManager; }
GeometryManager& ResourceManager::getGeometryManager() { return *mGeometryManager; }
ObjectManager& ResourceManager::getObjectManager() { return *mObjectManager; }
SoundManager& ResourceManager::getSoundManager() { return *mSoundManager; }

unsigned int ResourceManager::createResourceProviderId() { return mNextProviderId++; }

void ResourceManager::returnResourceProviderId(unsigned int) {}

}  // namespace Velun
