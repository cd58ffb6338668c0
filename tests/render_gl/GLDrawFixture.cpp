#include "GLDrawFixture.h"

namespace RenderGLTest {

VelunTest::EngineClock* GLDrawTest::sClock = nullptr;
Velun::GLRenderEngine* GLDrawTest::sEngine = nullptr;
Velun::GLSDLRenderWindow* GLDrawTest::sWindow = nullptr;

}  // namespace RenderGLTest
