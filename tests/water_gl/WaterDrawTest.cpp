// A water ribbon on screen: attached and drawn while empty, then grown by ten quads and
// drawn again, blended over a white wall, in an Xvfb window read back; then drawn once more
// unchanged, without loading its buffers again.

#include "support/GLDrawFixture.h"
#include "water/Water.h"

using namespace RenderGLTest;

namespace {

using WaterDrawTest = GLDrawTest;

TEST_F(WaterDrawTest, QuadsAddedAfterEarlierFramesAreDrawnBlendedAndNotLoadedAgainUnchanged) {
    addViewport(addCamera());
    addQuad(root(), 0, 0, -10, QuadShape{-20, -20, 20, 20}, colorMaterial(Velun::Color(1, 1, 1)));
    // Turned a quarter about x, the water's y faces the camera and its z runs down the
    // screen: the ribbon covers x from -3 to 0 and y from 3 to -3 at 5 units away.
    Velun::TransformationNode& place = own(new Velun::TransformationNode());
    place.translate(0, 0, -5, false);
    place.rotateX(float(M_PI / 2), true);
    Velun::Water& water = own(new Velun::Water());
    place.setChild(water);
    root().attachChild(place);

    // 0.88 of the water's colour over 0.12 of white, at the ribbon's upper and lower half,
    // right of it, above and below it: while empty, after six lines, after eleven.
    const Rgb blue{42, 87, 120}, white{255, 255, 255};
    const int at[5][2] = {{22, 20}, {22, 44}, {48, 32}, {22, 6}, {22, 58}};
    const Rgb expected[3][5] = {{white, white, white, white, white},
                                {blue, white, white, white, white},
                                {blue, blue, white, white, white}};
    const int linesAfter[3] = {0, 6, 11};
    for (int step = 0, lines = 0; step < 3; ++step) {
        // Each later step adds to a ribbon that was drawn already.
        for (; lines < linesAfter[step]; ++lines)
            water.addQuad(Velun::Point(-3, 0, -3 + 0.6f * lines), Velun::Point(0, 0, -3 + 0.6f * lines),
                          1.0f);
        frame();
        EXPECT_TRUE(logLines().empty()) << logLines().front();
        for (int i = 0; i < 5; ++i)
            EXPECT_TRUE(near(pixel(at[i][0], at[i][1]), expected[step][i]))
                << "step " << step << ", probe " << i;
    }
    unsigned int const loads = context().getBufferLoadCount();
    frame();
    EXPECT_EQ(loads, context().getBufferLoadCount())
        << "unchanged since the last frame, nothing is loaded again";
}

}  // namespace
