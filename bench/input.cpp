// Costs on the main loop's path: reading the engine clock, which the scheduler does
// once per subsystem per pass, and walking an event through the processor chain.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "core/TimerManager.h"
#include "core/VelunCore.h"
#include "input/InputEvent.h"
#include "input/InputManager.h"
#include "input/InputProcessor.h"

using namespace Velun;

namespace {

class PassingProcessor : public InputProcessor {
public:
    bool processEvent(InputEvent& event) override {
        benchmark::DoNotOptimize(event.getKeyEventInfo());
        return false;
    }
};

void BM_EngineTimestamp(benchmark::State& state) {
    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    core.setup(true);
    TimerManager& timers = core.getTimerManager();
    for (auto _ : state)
        benchmark::DoNotOptimize(timers.getTimestamp());
    core.shutdown();
}
BENCHMARK(BM_EngineTimestamp);

// One key event through a chain of processors that all pass it on.
void BM_EventThroughProcessors(benchmark::State& state) {
    VelunCore& core = VelunCore::getSingleton();
    core.startup();
    InputManager& input = core.getInputManager();
    std::vector<std::unique_ptr<PassingProcessor>> processors;
    for (int i = 0; i < state.range(0); ++i) {
        processors.emplace_back(new PassingProcessor());
        input.registerInputProcessor(*processors.back());
    }
    InputEvent event(0);
    event.setEventType(InputEvent::KeyEvent, *new KeyEventInfo(KeyEventInfo::KeyPressed, 38, 97, 0, 'a'));
    for (auto _ : state)
        input.triggerInputEvent(event);
    state.SetItemsProcessed(state.iterations() * state.range(0));
    processors.clear();
    core.shutdown();
}
BENCHMARK(BM_EventThroughProcessors)->Arg(1)->Arg(8)->Arg(64);

}  // namespace
