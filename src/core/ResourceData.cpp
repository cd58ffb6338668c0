#include "core/ResourceData.h"

#include "core/ResourceContainer.h"

namespace Velun {

ResourceData::ResourceData(unsigned int providerId) : mProviderId(providerId), mContainer(nullptr) {}

ResourceData::~ResourceData() {
    if (mContainer && mContainer->getResourceData(mProviderId) == this)
        mContainer->unsetResourceData(mProviderId);
}

unsigned int ResourceData::getProviderId() const { return mProviderId; }

ResourceContainer* ResourceData::getResourceContainer() const { return mContainer; }

void ResourceData::resourceReleased(ResourceContainer&) { delete this; }

}  // namespace Velun
