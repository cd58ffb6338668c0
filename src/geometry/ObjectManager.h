#pragma once

#include <string>

#include "core/NameMapper.h"
#include "foundation/LinkedMap.h"
#include "foundation/SharedPtr.h"
#include "foundation/Vector.h"
#include "geometry/ObjectFactory.h"
#include "geometry/ObjectLoader.h"
#include "velun_export.h"

namespace Velun {

class ObjectNode;

// Makes scene subtrees from models. The thing cached is the factory, not the object:
// the first createObject of a name maps it to a file and lets the first loader that
// accepts it parse the file into an ObjectFactory; every call after that asks the
// cached factory for a fresh object that shares the model's geometry and materials.
// Loaders are not owned. Errors go to the log channel "objectmanager".
class VELUN_EXPORT ObjectManager {
public:
    ObjectManager();
    virtual ~ObjectManager();

    // Initialises the loader if it is not yet and appends it; returns its position, or
    // 0 without registering it when it cannot be initialised.
    unsigned int registerObjectLoader(ObjectLoader& loader);
    // Removes the loader from the list; false if it was not registered. For plug-ins
    // that delete their loaders before the manager ends.
    bool unregisterObjectLoader(ObjectLoader& loader);
    unsigned int getObjectLoaderCount() const { return mLoaders.size(); }

    void setObjectNameMapper(Dorvan::SharedPtr<NameMapper> mapper) { mNameMapper = mapper; }
    Dorvan::SharedPtr<NameMapper> getObjectNameMapper() const { return mNameMapper; }

    // Stores a factory under a name, replacing an earlier one; createObject of the name
    // then uses it like a loaded one.
    void registerObjectFactory(std::string const& name, Dorvan::SharedPtr<ObjectFactory> factory);
    bool isLoaded(std::string const& name) const;
    // The factory cached under the name, or null; the lookup adds no entry.
    Dorvan::SharedPtr<ObjectFactory> getObjectFactory(std::string const& name) const;
    // Drops the cached factory; objects made from it stay valid. True, also for an
    // unknown name.
    bool unloadObjectFactory(std::string const& name);

    // A new object of that name, owned by the caller, or null. The factory is looked up,
    // or loaded once through the name mapper and the loaders and then cached.
    ObjectNode* createObject(std::string const& name);

private:
    ObjectManager(const ObjectManager&) = delete;
    ObjectManager& operator=(const ObjectManager&) = delete;

    Dorvan::SharedPtr<NameMapper> mNameMapper;
    Dorvan::Vector<ObjectLoader*> mLoaders;
    mutable Dorvan::LinkedMap<std::string, Dorvan::SharedPtr<ObjectFactory>> mFactories;
};

}  // namespace Velun
