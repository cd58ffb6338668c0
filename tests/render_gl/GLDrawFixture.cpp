#include "GLDrawFixture.h"

namespace RenderGLTest {

VelunTest::EngineClock* GLDrawTest::sClock = nullptr;
Velun::GLRenderEngine* GLDrawTest::sEngine = nullptr;
Velun::GLSDLRenderWindow* GLDrawTest::sWindow = nullptr;

namespace {

class WindowEnvironment : public ::testing::Environment {
public:
    void SetUp() override { GLDrawTest::startWindow(); }
    void TearDown() override { GLDrawTest::stopWindow(); }
};

::testing::Environment* const gWindowEnvironment =
    ::testing::AddGlobalTestEnvironment(new WindowEnvironment());

}  // namespace

}  // namespace RenderGLTest
