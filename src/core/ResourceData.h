#pragma once

#include "velun_export.h"

namespace Velun {

class ResourceContainer;

// A provider's own data on one resource (for a render context: its buffer or texture
// names and upload stamps). The provider creates it, hangs it on the resource with
// ResourceContainer::setResourceData and keeps it for as long as it likes.
//
// Lifetime contract, so that neither side is left with a dangling pointer:
// - When the resource goes away (or its contents are replaced wholesale by assignment),
//   it unhooks the data and calls resourceReleased(); from then on the data is the
//   provider's alone, and the hook is where the provider frees it and its GPU objects.
// - When the provider deletes data that is still attached, the destructor unhooks it
//   from its resource, so a provider that ends first simply deletes its data.
class VELUN_EXPORT ResourceData {
public:
    explicit ResourceData(unsigned int providerId);
    virtual ~ResourceData();

    unsigned int getProviderId() const;

    // The resource this data hangs on, or null when it hangs on none.
    ResourceContainer* getResourceContainer() const;

    // Called once by a resource that drops this data without being asked to: it is being
    // destroyed or assigned new contents. The data is already unhooked when this runs;
    // `resource` is only valid for the duration of the call (its derived parts may
    // already be gone). The default deletes the data; a provider that must free other
    // objects with it (GL names) overrides this.
    virtual void resourceReleased(ResourceContainer& resource);

    ResourceData(const ResourceData&) = delete;
    ResourceData& operator=(const ResourceData&) = delete;

private:
    friend class ResourceContainer;

    unsigned int mProviderId;
    ResourceContainer* mContainer;
};

}  // namespace Velun
