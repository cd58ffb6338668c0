#pragma once

#include "foundation/LinkedMap.h"
#include "velun_export.h"

namespace Velun {

class ResourceData;

// Base of every resource that providers (render contexts) attach data to: data sets and
// textures. Each provider has at most one ResourceData here, found by its provider id;
// the resource knows nothing of the provider's type. Provider 0, the usual single render
// context, has a field of its own so its lookup costs no map search.
//
// The container does not own the data: setting, replacing or unsetting deletes nothing.
// When the container is destroyed or assigned, it unhooks every attached data and calls
// ResourceData::resourceReleased on it, so the provider can free what it made (see
// ResourceData). A copy starts with no provider data: the copy is a new resource.
class VELUN_EXPORT ResourceContainer {
public:
    ResourceContainer();
    ResourceContainer(const ResourceContainer& other);
    virtual ~ResourceContainer();

    ResourceContainer& operator=(const ResourceContainer& other);

    // Attaches the data under its provider id, replacing (not deleting) earlier data of
    // that provider.
    virtual void setResourceData(ResourceData& data);
    // The data of this provider, or null. Never creates an entry.
    virtual ResourceData* getResourceData(unsigned int providerId);
    // Detaches the provider's data without deleting it.
    virtual void unsetResourceData(unsigned int providerId);

    // Number of providers with data here.
    unsigned int getResourceDataCount() const;

private:
    void releaseAll();

    Dorvan::LinkedMap<unsigned int, ResourceData*> mResourceData;
    ResourceData* mFirstProviderData;
};

}  // namespace Velun
