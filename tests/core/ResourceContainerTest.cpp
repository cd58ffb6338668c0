#include <gtest/gtest.h>

#include "core/ResourceContainer.h"
#include "core/ResourceData.h"

using namespace Velun;

namespace {

// Provider data that counts how it ends, the way a render context's id sets would.
class CountingData : public ResourceData {
public:
    CountingData(unsigned int providerId, int* released, int* destroyed)
        : ResourceData(providerId), mReleased(released), mDestroyed(destroyed) {}
    ~CountingData() override { ++*mDestroyed; }
    void resourceReleased(ResourceContainer& resource) override {
        ++*mReleased;
        ResourceData::resourceReleased(resource);
    }
    int* mReleased;
    int* mDestroyed;
};

// Data that the provider keeps and frees itself.
class KeptData : public ResourceData {
public:
    explicit KeptData(unsigned int providerId) : ResourceData(providerId) {}
    void resourceReleased(ResourceContainer& resource) override {
        ++mReleased;
        mSeenDataCount = resource.getResourceDataCount();
    }
    int mReleased = 0;
    unsigned int mSeenDataCount = 99;
};

}  // namespace

TEST(ResourceContainerTest, ReplacedDataIsNotDeletedAndNoLongerHooked) {
    ResourceContainer container;
    KeptData oldData(2);
    KeptData newData(2);
    container.setResourceData(oldData);
    container.setResourceData(newData);
    EXPECT_EQ(&newData, container.getResourceData(2));
    EXPECT_EQ(1u, container.getResourceDataCount());
    EXPECT_EQ(nullptr, oldData.getResourceContainer());
    EXPECT_EQ(0, oldData.mReleased);
}

TEST(ResourceContainerTest, DestroyedResourceReleasesEveryProvidersData) {
    int released = 0, destroyed = 0;
    CountingData* first = new CountingData(0, &released, &destroyed);
    CountingData* second = new CountingData(5, &released, &destroyed);
    {
        ResourceContainer container;
        container.setResourceData(*first);
        container.setResourceData(*second);
    }
    // Each hook ran once, after the data was unhooked, and the default hook deleted it.
    EXPECT_EQ(2, released);
    EXPECT_EQ(2, destroyed);
}

TEST(ResourceContainerTest, HookSeesTheResourceAlreadyEmpty) {
    KeptData first(0);
    KeptData second(4);
    {
        ResourceContainer container;
        container.setResourceData(first);
        container.setResourceData(second);
    }
    EXPECT_EQ(1, first.mReleased);
    EXPECT_EQ(1, second.mReleased);
    EXPECT_EQ(0u, first.mSeenDataCount);
    EXPECT_EQ(0u, second.mSeenDataCount);
    EXPECT_EQ(nullptr, second.getResourceContainer());
}

TEST(ResourceContainerTest, DataDeletedByItsProviderUnhooksItself) {
    ResourceContainer container;
    int released = 0, destroyed = 0;
    CountingData* data = new CountingData(1, &released, &destroyed);
    container.setResourceData(*data);
    delete data;
    EXPECT_EQ(nullptr, container.getResourceData(1));
    EXPECT_EQ(0u, container.getResourceDataCount());
    EXPECT_EQ(0, released);
}

TEST(ResourceContainerTest, CopyStartsWithoutProviderDataAndAssignmentReleasesOwnData) {
    ResourceContainer source;
    KeptData sourceData(0);
    source.setResourceData(sourceData);

    ResourceContainer copy(source);
    EXPECT_EQ(nullptr, copy.getResourceData(0));
    EXPECT_EQ(&sourceData, source.getResourceData(0));

    KeptData targetData(0);
    copy.setResourceData(targetData);
    copy = source;
    EXPECT_EQ(nullptr, copy.getResourceData(0));
    EXPECT_EQ(1, targetData.mReleased);
    EXPECT_EQ(&sourceData, source.getResourceData(0));
    EXPECT_EQ(0, sourceData.mReleased);
    source.unsetResourceData(0);
}
