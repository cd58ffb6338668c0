#include "core/ResourceContainer.h"

#include <vector>

#include "core/ResourceData.h"

namespace Velun {

ResourceContainer::ResourceContainer() : mFirstProviderData(nullptr) {}

ResourceContainer::ResourceContainer(const ResourceContainer&) : mFirstProviderData(nullptr) {}

ResourceContainer::~ResourceContainer() { releaseAll(); }

ResourceContainer& ResourceContainer::operator=(const ResourceContainer& other) {
    if (this != &other)
        releaseAll();
    return *this;
}

void ResourceContainer::setResourceData(ResourceData& data) {
    unsigned int id = data.getProviderId();
    ResourceData* old = getResourceData(id);
    if (old == &data)
        return;
    if (old)
        old->mContainer = nullptr;
    // Data hangs on one resource at a time.
    if (data.mContainer && data.mContainer != this && data.mContainer->getResourceData(id) == &data)
        data.mContainer->unsetResourceData(id);
    if (id == 0)
        mFirstProviderData = &data;
    else
        mResourceData.put(id, &data);
    data.mContainer = this;
}

ResourceData* ResourceContainer::getResourceData(unsigned int providerId) {
    if (providerId == 0)
        return mFirstProviderData;
    if (mResourceData.containsKey(providerId))
        return mResourceData.get(providerId);
    return nullptr;
}

void ResourceContainer::unsetResourceData(unsigned int providerId) {
    ResourceData* data;
    if (providerId == 0) {
        data = mFirstProviderData;
        mFirstProviderData = nullptr;
    } else {
        data = mResourceData.remove(providerId);
    }
    if (data && data->mContainer == this)
        data->mContainer = nullptr;
}

unsigned int ResourceContainer::getResourceDataCount() const {
    return mResourceData.size() + (mFirstProviderData ? 1 : 0);
}

void ResourceContainer::releaseAll() {
    // Unhook everything first: a hook may delete its data, or touch other containers.
    std::vector<ResourceData*> released;
    if (mFirstProviderData)
        released.push_back(mFirstProviderData);
    mFirstProviderData = nullptr;
    for (Dorvan::LinkedMap<unsigned int, ResourceData*>::const_iterator it = mResourceData.begin();
         it != mResourceData.end(); ++it)
        if (it->second)
            released.push_back(it->second);
    mResourceData.clear();
    for (ResourceData* data : released) {
        data->mContainer = nullptr;
        data->resourceReleased(*this);
    }
}

}  // namespace Velun
