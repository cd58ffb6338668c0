#include <gtest/gtest.h>

#include <memory>

#include "ObjectTestModels.h"
#include "core/FileNameMapper.h"
#include "core/ResourceManager.h"
#include "geometry/GeometryObject.h"
#include "geometry/GeometrySubobject.h"
#include "geometry/ObjectManager.h"
#include "support/Engine.h"

using Dorvan::SharedPtr;
using ObjectTestModels::TextModelLoader;
using namespace Velun;

namespace {

// A started engine whose ObjectManager maps names into "models".
class ObjectManagerTest : public VelunTest::EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        manager().setObjectNameMapper(SharedPtr<NameMapper>(new FileNameMapper("models")));
    }

    static ObjectManager& manager() {
        return VelunCore::getSingleton().getResourceManager().getObjectManager();
    }
    static GeometryObject* asGeometryObject(ObjectNode* node) { return dynamic_cast<GeometryObject*>(node); }
};

// Each object is a new subtree around the factory's shared geometry and materials. Unloading
// or shutdown releases the factory; the objects keep their data.
TEST_F(ObjectManagerTest, LoadsOnceMakesAnObjectPerCallAndUnloadReleasesTheFactory) {
    TextModelLoader loader;
    EXPECT_EQ(manager().registerObjectLoader(loader), 0u);
    EXPECT_TRUE(loader.isInitialized());
    std::unique_ptr<ObjectNode> first(manager().createObject("tri.tmod"));
    std::unique_ptr<ObjectNode> second(manager().createObject("tri.tmod"));
    GeometryObject *a = asGeometryObject(first.get()), *b = asGeometryObject(second.get());
    ASSERT_TRUE(a && b);
    EXPECT_NE(a->getSubobjectAt(0), b->getSubobjectAt(0));
    EXPECT_EQ(loader.mLoadCount, 1);
    EXPECT_EQ(loader.mCanLoadCount, 1) << "a cached name must not reach the loaders";
    EXPECT_TRUE(manager().isLoaded("tri.tmod"));
    EXPECT_EQ(b->getName(), "tri.tmod");
    SharedPtr<Velun::Geometry> oldGeometry = b->getSubobjectAt(0)->getGeometry(0);
    EXPECT_EQ(oldGeometry.getRefCount(), 4);  // us, both objects' subobjects and the factory
    EXPECT_EQ(a->getDefaultMaterial(1), b->getDefaultMaterial(1));
    EXPECT_EQ(b->getDefaultMaterial(1)->getDiffuseMaterialColor(), Velun::Color(0, 0, 1, 1));

    EXPECT_TRUE(manager().unloadObjectFactory("tri.tmod"));
    EXPECT_FALSE(manager().isLoaded("tri.tmod"));
    EXPECT_EQ(oldGeometry.getRefCount(), 3);
    EXPECT_EQ(a->getDefaultMaterial(0)->getDiffuseMaterialColor(), Velun::Color(1, 0, 0, 1));
    // The next call loads again.
    std::unique_ptr<ObjectNode> after(manager().createObject("tri.tmod"));
    ASSERT_TRUE(asGeometryObject(after.get()));
    EXPECT_EQ(loader.mLoadCount, 2);
    SharedPtr<Velun::Geometry> geometry = asGeometryObject(after.get())->getSubobjectAt(0)->getGeometry(0);
    SharedPtr<Velun::Material> material = asGeometryObject(after.get())->getDefaultMaterial(0);
    EXPECT_NE(geometry.get(), oldGeometry.get());

    VelunCore::getSingleton().shutdown();
    EXPECT_EQ(geometry.getRefCount(), 2);
    EXPECT_EQ(material.getRefCount(), 2);
    // Objects released after shutdown need no manager.
    first.reset();
    second.reset();
    after.reset();
    EXPECT_EQ(oldGeometry.getRefCount(), 1);
    EXPECT_EQ(geometry.getRefCount(), 1);
    EXPECT_EQ(material.getRefCount(), 1);
}

TEST_F(ObjectManagerTest, OnlyTheFirstAcceptingLoaderIsAskedAndFailuresAreLogged) {
    TextModelLoader first, second;
    EXPECT_EQ(manager().registerObjectLoader(first), 0u);
    EXPECT_EQ(manager().registerObjectLoader(second), 1u);
    delete manager().createObject("tri.tmod");
    EXPECT_EQ(first.mLoadCount, 1);
    EXPECT_EQ(second.mCanLoadCount, 0);

    // The first fails on a missing model, logging its cause and then the manager's; the
    // second, which would fail too, is not tried. A name no loader takes loads nothing.
    const std::pair<const char*, std::string> cases[] = {
        {"missing.tmod",
         "Could not open models\\missing.tmod\nCould not find an objectloader for missing.tmod\n"},
        {"ghost.obj", "Could not find an objectloader for ghost.obj\n"},
    };
    for (const auto& [name, lines] : cases) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(manager().createObject(name), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), lines);
        EXPECT_FALSE(manager().isLoaded(name));
        EXPECT_EQ(first.mLoadCount, 2);
        EXPECT_EQ(second.mLoadCount, 0);
    }
}

}  // namespace
