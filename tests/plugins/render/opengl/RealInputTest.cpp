#include <cstdlib>
#include <sstream>
#include <vector>

#include "GLTestWindow.h"
#include "core/ProcessManager.h"
#include "core/Subsystem.h"
#include "input/InputEvent.h"
#include "input/InputEventInfo.h"
#include "input/InputManager.h"
#include "input/InputProcessor.h"

using namespace Velun;

namespace {

// Keys and buttons as they reach the application; stops the main loop once the
// expected input has arrived.
class Recorder : public InputProcessor {
public:
    explicit Recorder(ProcessManager& loop) : InputProcessor(1), mLoop(loop) {}
    bool processEvent(InputEvent& event) override {
        if (KeyEventInfo* key = event.getKeyEventInfo()) {
            if (key->getEventType() == KeyEventInfo::KeyPressed) {
                mKeys.push_back(key->getKeySymbol());
                mCharacters.push_back(key->getUnicode());
            }
        } else if (ButtonEventInfo* button = event.getButtonEventInfo()) {
            if (button->getEventType() == ButtonEventInfo::ButtonPressed) {
                mButtons.push_back(button->getButtonNr());
                mButtonX = button->getX();
                mButtonY = button->getY();
            }
        }
        if (mKeys.size() >= 2 && !mButtons.empty())
            mLoop.stop(false);
        return true;
    }
    ProcessManager& mLoop;
    std::vector<int> mKeys;
    std::vector<int> mCharacters;
    std::vector<int> mButtons;
    int mButtonX = -1;
    int mButtonY = -1;
};

// Ends the main loop after a while of engine time should the input never come.
class Watchdog : public Subsystem, public Process {
public:
    Watchdog(int id, ProcessManager& loop, std::int64_t limit) : mLoop(loop), mLimit(limit) {
        setSubsystemId(id);
        mProcesses.push_back(this);
    }
    std::vector<Process*>* getProcessList() override { return &mProcesses; }
    int run(std::int64_t timestamp) override {
        if (mStart == 0)
            mStart = timestamp;
        if (timestamp - mStart > mLimit) {
            mExpired = true;
            mLoop.stop(false);
        }
        return 0;
    }
    bool mExpired = false;

private:
    ProcessManager& mLoop;
    std::int64_t mLimit;
    std::int64_t mStart = 0;
    std::vector<Process*> mProcesses;
};

class RealInputTest : public GLTest::WindowTest {
protected:
    std::string windowName() const override { return "velun real input"; }
};

}  // namespace

TEST_F(RealInputTest, KeysAndClicksTypedIntoTheWindowReachProcessorsInTheMainLoop) {
    ASSERT_EQ(0, std::system("command -v xdotool > /dev/null")) << "xdotool is needed";
    ProcessManager& loop = core.getProcessManager();
    Recorder recorder(loop);
    core.getInputManager().registerInputProcessor(recorder);
    Watchdog watchdog(loop.createSubsystemId(), loop, 10000);
    loop.registerSubsystem(watchdog, -1);
    window->render(0);

    // X queues the input until the loop's first pass drains it through SDL. "type" takes
    // all words after it as text, so it comes last.
    std::ostringstream command;
    command << "xdotool search --sync --name '" << windowName() << "' windowfocus --sync %1"
            << " mousemove --window %1 12 17 click 1 type --delay 30 vl";
    ASSERT_EQ(0, std::system(command.str().c_str()));
    EXPECT_EQ(0, loop.run(true));

    EXPECT_FALSE(watchdog.mExpired);
    ASSERT_EQ(2u, recorder.mKeys.size());
    EXPECT_EQ(SDLK_v, recorder.mKeys[0]);
    EXPECT_EQ(SDLK_l, recorder.mKeys[1]);
    EXPECT_EQ('v', recorder.mCharacters[0]);
    EXPECT_EQ('l', recorder.mCharacters[1]);
    ASSERT_EQ(1u, recorder.mButtons.size());
    EXPECT_EQ(1, recorder.mButtons[0]);
    EXPECT_EQ(12, recorder.mButtonX);
    EXPECT_EQ(17, recorder.mButtonY);
    core.getInputManager().unregisterInputProcessor(recorder);
}
