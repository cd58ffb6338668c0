#include <gtest/gtest.h>

#include "core/ResourceManager.h"

using namespace Velun;

TEST(ResourceManagerTest, ProviderIdsStartAtZeroAndAreNotReused) {
    ResourceManager resources;
    EXPECT_EQ(0u, resources.createResourceProviderId());
    resources.returnResourceProviderId(0);
    EXPECT_EQ(1u, resources.createResourceProviderId());
    EXPECT_EQ(2u, resources.createResourceProviderId());
}

TEST(ResourceManagerTest, OwnsTheResourceManagersUntilItEnds) {
    ResourceManager resources;
    EXPECT_EQ(&resources.getTextureManager(), resources.findTextureManager());
    EXPECT_EQ(&resources.getGeometryManager(), resources.findGeometryManager());
}
