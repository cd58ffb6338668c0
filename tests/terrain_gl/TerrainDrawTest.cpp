#include "support/GLDrawFixture.h"
#include "terrain/TerrainFixture.h"

namespace RenderGLTest {

using TerrainTest::grey;
using Velun::Terrain;

// A 2 x 2 terrain-unit tile of 16 x 16 vertices, 2 x 2 patches, turned to face the
// camera 2 units away: it fills the middle half of the picture, its x to the right and
// its z downwards.
class TerrainDrawTest : public GLDrawTest {
protected:
    Terrain::Tile& addTerrain() {
        addViewport(addCamera());
        mPlace = &own(new Velun::TransformationNode());
        mPlace->translate(-1, 1, -2, false);
        mPlace->rotateX(float(M_PI) / 2, true);
        Terrain& terrain = own(new Terrain(1, 1));
        terrain.initializeTerrain(3, 1, 2.0f);
        mPlace->setChild(terrain);
        root().attachChild(*mPlace);
        Terrain::Tile& tile = *terrain.getTile(0, 0);
        tile.setMaxHeight(1.0f);
        tile.setEnabled(true);
        return tile;
    }
    Velun::TransformationNode* mPlace = nullptr;
};

TEST_F(TerrainDrawTest, FlatTileHasNoHolesBetweenItsPatchesARebuiltOneShowsItsNewHeightsAndAColourMapIsLit) {
    Terrain::Tile& tile = addTerrain();
    tile.updateTile();
    frame();
    // Grey 0.2 at the ground's offset; black background around it.
    for (int y = 17; y < 47; ++y)
        for (int x = 17; x < 47; ++x)
            ASSERT_TRUE(near(pixel(x, y), Rgb{51, 51, 51})) << "(" << x << ", " << y << ")";
    expectPixels({{8, 32, {0, 0, 0}}, {32, 56, {0, 0, 0}}});
    // One draw per patch in view: moved right, the far column of patches leaves it.
    EXPECT_EQ(mDrawCalls, 4u);
    mPlace->translate(2.5f, 0, 0, false);
    frame();
    EXPECT_EQ(mDrawCalls, 2u);
    mPlace->translate(-2.5f, 0, 0, false);

    // Raised by one unit towards the camera, and white by height.
    ASSERT_TRUE(tile.load(grey(2, {255, 255, 255, 255})));
    tile.updateTile();
    frame();
    expectPixels({{32, 32, {255, 255, 255}}, {4, 32, {255, 255, 255}}});

    // Lit, a colour map's vertex colour is ambient and diffuse: 0.2 global and 0.2 light
    // ambient, plus the head-on diffuse light.
    mCameras.front()->getCamSettings().getRenderSettings()->setUseLights(true);
    addLight(Velun::Light::Directional);
    tile.setColorMap(makeImage(2, 2, {128, 102, 0, 128, 102, 0, 128, 102, 0, 128, 102, 0}));
    tile.updateTile();
    frame();
    EXPECT_TRUE(near(centre(), Rgb{toByte(1.4f * 128 / 255), toByte(1.4f * 102 / 255), 0}, 4));
}

TEST_F(TerrainDrawTest, LayersShowWhereTheirMasksSay) {
    Terrain::Tile& tile = addTerrain();
    tile.setColorMap(makeImage(2, 2, {255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255}));
    tile.setBaseMap(makeImage(2, 2, {255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0}), 1.0f);
    // Green on the right half, blue on the lower half, the light map halves everything.
    tile.addTextureLayer(makeImage(2, 2, {0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0}),
                         grey(2, {0, 255, 0, 255}), 1.0f);
    tile.addTextureLayer(makeImage(2, 2, {0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 255}),
                         grey(2, {0, 0, 255, 255}), 1.0f);
    tile.setLightMap(grey(2, {128, 128, 128, 128}), 1.0f, 0.0f);
    tile.updateTile();
    frame();
    // The tile's quarters: (u, v) 0.25 or 0.75 apart.
    expectPixels({{24, 24, {128, 0, 0}}, {40, 24, {0, 128, 0}}, {24, 40, {0, 0, 128}}, {40, 40, {0, 0, 128}}},
                 6);
}

TEST_F(TerrainDrawTest, TerrainsComeAndGoWithoutLeftovers) {
    addViewport(addCamera());
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        Terrain* terrain = new Terrain(2, 1);
        terrain->initializeTerrain(2, 1, 1.0f);
        terrain->getTile(1, 0)->setEnabled(true);
        terrain->getTile(1, 0)->updateTile();
        Velun::TransformationNode& place = own(new Velun::TransformationNode());
        place.translate(-1, 0.5f, -1, false);
        place.rotateX(float(M_PI) / 2, true);
        place.setChild(*terrain);
        root().attachChild(place);
        frame();
        expectPixels({{48, 16, {51, 51, 51}}, {16, 16, {0, 0, 0}}});
        delete terrain;
        frame();
        EXPECT_TRUE(near(pixel(48, 16), Rgb{0, 0, 0}));
    }
}

}  // namespace RenderGLTest
