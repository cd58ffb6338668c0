// Loaded images on screen: a quad per test image, drawn by the GL back end into an Xvfb
// window and read back. (The jeep from its MS3D file is on screen in the showcase's test.)

#include "loader/EngineFixture.h"
#include "support/GLDrawFixture.h"

using namespace Velun;
using namespace RenderGLTest;

using LoaderDrawTest = GLDrawTest;

TEST_F(LoaderDrawTest, EveryImageFormatShowsItsTrueColours) {
    // Each file with its tolerance: lossy formats come back close, not exact.
    const std::pair<const char*, int> cases[] = {
        {"rgb.png", 0},    {"rgba.png", 0},      {"palette.png", 0},     {"deep.png", 1},
        {"quads.jpg", 12}, {"quads.tga", 0},     {"quads-alpha.tga", 0}, {"quads.bmp", 0},
        {"quads.dds", 0},  {"quads-dxt1.dds", 8}};
    // The image's first row (red, green) at t = 0, the bottom of a quad filling the view;
    // blue and white above.
    const std::vector<Probe> probes = {
        {16, 16, {0, 0, 255}}, {48, 16, {255, 255, 255}}, {16, 48, {255, 0, 0}}, {48, 48, {0, 255, 0}}};
    DataDirectory data;  // the working directory, of test data
    DataDirectory::mapNames();
    DevILPlugin images;
    images.registerPlugin();
    addViewport(addCamera());
    for (const auto& [name, tolerance] : cases) {
        SCOPED_TRACE(name);
        SharedPtr<TextureSource> image =
            VelunCore::getSingleton().getResourceManager().getTextureManager().getTextureSource(name);
        ASSERT_TRUE(image);
        SharedPtr<Texture> texture(new Texture2D(image));
        texture->setAllFilters(Texture::Nearest);
        texture->setTexMode(Texture::Replace);
        SharedPtr<Material> material = colorMaterial(Color(1, 1, 1));
        material->setTexture(0, texture);
        addQuad(root(), 0, 0, -1, QuadShape{-1, -1, 1, 1, 1}, material);
        frame();
        expectPixels(probes, tolerance);
        mNodes.clear();
    }
    images.unregisterPlugin();
}
