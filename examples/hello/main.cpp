// The smallest Velun program: start the engine, open a window, run the main loop with a
// subsystem of our own, and stop it from inside a pass: when the window is closed (or
// Escape is pressed in it), or after a fixed number of frames.
#include <cstdint>
#include <iostream>
#include <vector>

#include "Velun.h"
#include "input/InputEvent.h"
#include "input/InputProcessor.h"

using namespace Velun;

// Counts frames and stops the loop after a fixed number of them (0: never).
class FrameCounter : public Process {
public:
    explicit FrameCounter(int frames) : mFrames(frames), mCount(0) {}

    int run(std::int64_t timestamp) override {
        if (mCount == 0)
            mFirst = timestamp;
        mLast = timestamp;
        if (++mCount == mFrames)
            VelunCore::getSingleton().getProcessManager().stop(false);
        return 0;
    }

    int mFrames, mCount;
    std::int64_t mFirst = 0, mLast = 0;
};

// Every application needs this: stop the main loop on a quit request.
class QuitProcessor : public InputProcessor {
public:
    bool processEvent(InputEvent& event) override {
        SysWMEventInfo* window = event.getSysWMEventInfo();
        KeyEventInfo* key = event.getKeyEventInfo();
        bool quit = window && window->getEventType() == SysWMEventInfo::SysWMQuit;
        // Key symbols keep SDL's numbering, in which Escape is 27.
        bool escape = key && key->getEventType() == KeyEventInfo::KeyPressed && key->getKeySymbol() == 27;
        if (!quit && !escape)
            return false;
        std::cout << "quit requested" << std::endl;
        VelunCore::getSingleton().getProcessManager().stop(false);
        return true;
    }
};

class CounterSubsystem : public Subsystem {
public:
    explicit CounterSubsystem(int id) { setSubsystemId(id); }
    std::vector<Process*>* getProcessList() override { return &mProcesses; }
    std::vector<Process*> mProcesses;
};

int main() {
    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    // Input arrives through the window; without a display it cannot open, and a frame
    // count ends the loop instead.
    core.getRenderManager().initializeRenderer(false);
    bool const window = core.getRenderManager().createRenderWindow("hello", 320, 240, false, 0, 0, nullptr);
    if (!window)
        std::cout << "no window: the loop ends after 100 passes" << std::endl;

    ProcessManager& processes = core.getProcessManager();
    CounterSubsystem subsystem(processes.createSubsystemId());
    FrameCounter counter(window ? 0 : 100);
    subsystem.mProcesses.push_back(&counter);
    processes.registerSubsystem(subsystem, -1);
    QuitProcessor quitProcessor;
    core.getInputManager().registerInputProcessor(quitProcessor);

    processes.run(true);
    std::cout << "ran " << counter.mCount << " passes from " << counter.mFirst << " ms to " << counter.mLast
              << " ms" << std::endl;

    core.shutdown();
    return 0;
}
