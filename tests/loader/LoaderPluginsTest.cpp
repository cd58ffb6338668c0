#include <memory>

#include "core/PluginManager.h"
#include "geometry/GeometryObject.h"
#include "loader/EngineFixture.h"
#include "plugins/loader/devil/DevILPlugin.h"
#include "plugins/loader/ms3d/Ms3dPlugin.h"

using namespace Velun;

namespace {

class LoaderPluginsTest : public EngineFixture {};

}  // namespace

TEST_F(LoaderPluginsTest, SetupBringsBothLoadersInTheirPlaces) {
    core.setup(true);
    PluginManager& plugins = core.getPluginManager();
    ASSERT_GE(plugins.getPluginCount(), 4u);
    EXPECT_NE(nullptr, dynamic_cast<DevILPlugin*>(plugins.getPlugin(2)));
    EXPECT_NE(nullptr, dynamic_cast<Ms3dPlugin*>(plugins.getPlugin(3)));
    EXPECT_EQ(1u, core.getResourceManager().getTextureManager().getTextureSourceLoaderCount());
    EXPECT_EQ(1u, core.getResourceManager().getObjectManager().getObjectLoaderCount());

    // The user's way: a model below models/, its image below textures/.
    std::unique_ptr<ObjectNode> jeep(core.getResourceManager().getObjectManager().createObject("jeep1.ms3d"));
    GeometryObject* object = dynamic_cast<GeometryObject*>(jeep.get());
    ASSERT_NE(nullptr, object);
    ASSERT_TRUE(object->getDefaultMaterial(0));
    EXPECT_TRUE(object->getDefaultMaterial(0)->getTexture(0));
}
