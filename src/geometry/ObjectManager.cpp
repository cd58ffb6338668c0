#include "geometry/ObjectManager.h"

#include "core/VelunCore.h"

namespace Velun {

ObjectManager::ObjectManager() {}

ObjectManager::~ObjectManager() {
    mFactories.clear();
    mLoaders.clear();
    mNameMapper.release();
}

unsigned int ObjectManager::registerObjectLoader(ObjectLoader& loader) {
    if (!loader.isInitialized() && !loader.initialize())
        return 0;
    return static_cast<unsigned int>(mLoaders.add(&loader));
}

bool ObjectManager::unregisterObjectLoader(ObjectLoader& loader) {
    if (!mLoaders.contains(&loader))
        return false;
    mLoaders.remove(&loader);
    return true;
}

void ObjectManager::registerObjectFactory(std::string const& name, Dorvan::SharedPtr<ObjectFactory> factory) {
    mFactories.put(name, factory);
}

bool ObjectManager::isLoaded(std::string const& name) const { return mFactories.containsKey(name); }

Dorvan::SharedPtr<ObjectFactory> ObjectManager::getObjectFactory(std::string const& name) const {
    if (!mFactories.containsKey(name))
        return Dorvan::SharedPtr<ObjectFactory>();
    return mFactories.get(name);
}

bool ObjectManager::unloadObjectFactory(std::string const& name) {
    mFactories.remove(name);
    return true;
}

ObjectNode* ObjectManager::createObject(std::string const& name) {
    Dorvan::SharedPtr<ObjectFactory> factory = getObjectFactory(name);
    if (!factory) {
        if (!mNameMapper)
            return nullptr;
        NameMapper::ResourceInfo info = mNameMapper->getResourceInfo(name);
        for (unsigned int i = 0; i < mLoaders.size(); ++i) {
            ObjectLoader* loader = mLoaders.get(i);
            if (loader->canLoad(info)) {
                // Only the first loader that accepts is asked, whatever it returns.
                factory = loader->load(info);
                break;
            }
        }
        if (!factory) {
            VelunCore::getLogger("objectmanager")->error("Could not find an objectloader for " + name);
            return nullptr;
        }
        mFactories.put(name, factory);
    }
    return factory->createObject();
}

}  // namespace Velun
