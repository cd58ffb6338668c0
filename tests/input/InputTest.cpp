#include <functional>

#include "input/InputEvent.h"
#include "input/InputManager.h"
#include "input/InputProcessor.h"
#include "input/InputProvider.h"
#include "support/Engine.h"
#include "support/PassRecorder.h"

using namespace Velun;
typedef std::vector<std::int64_t> Stamps;

namespace {

// A key info that counts its destructions.
class CountedKeyInfo : public KeyEventInfo {
public:
    explicit CountedKeyInfo(int& deletions) : KeyEventInfo(KeyPressed, 0, 0, 0), mDeletions(deletions) {}
    ~CountedKeyInfo() override { ++mDeletions; }
    int& mDeletions;
};

Dorvan::Vector<float> axes(std::initializer_list<float> values) {
    Dorvan::Vector<float> v;
    for (float value : values)
        v.add(value);
    return v;
}

TEST(InputEventTest, OnlyTheAccessorOfTheTypeGivesTheInfoEachInfoIsDeletedOnceAndMoveInfoCopiesItsAxes) {
    Dorvan::Vector<float> absolute = axes({10.5f, -2.0f});
    MoveEventInfo* move = new MoveEventInfo(absolute, axes({1.0f}));
    absolute.set(0, 99.0f);
    InputEvent event(0);
    event.setEventType(InputEvent::MoveEvent, *move);
    EXPECT_EQ(move, event.getMoveEventInfo());
    EXPECT_EQ(nullptr, event.getKeyEventInfo());
    // Missing axes read as zero.
    EXPECT_EQ(2, move->getAxisCount());
    EXPECT_EQ((std::vector<float>{10.5f, -2.0f, 0.0f, 1.0f, 0.0f}),
              (std::vector<float>{move->getX(), move->getY(), move->getZ(), move->getRelativeX(),
                                  move->getRelativeY()}));
    // Info of another class than the type is not handed out.
    event.setEventType(InputEvent::KeyEvent, *new ButtonEventInfo(ButtonEventInfo::ButtonPressed, 1));
    EXPECT_EQ(nullptr, event.getKeyEventInfo());
    EXPECT_EQ(nullptr, event.getButtonEventInfo());

    int first = 0, second = 0;
    {
        InputEvent keys(0);
        CountedKeyInfo* info = new CountedKeyInfo(first);
        keys.setEventType(InputEvent::KeyEvent, *info);
        keys.setEventType(InputEvent::KeyEvent, *info);  // the same info again stays
        EXPECT_EQ(0, first);
        keys.setEventType(InputEvent::KeyEvent, *new CountedKeyInfo(second));
        EXPECT_EQ(1, first);
        EXPECT_EQ(0, second);
    }
    EXPECT_EQ(1, first);
    EXPECT_EQ(1, second);
}

// Writes its name into a shared trace for each event it sees; takes the event when told
// to, and runs an optional action first.
class RecordingProcessor : public InputProcessor {
public:
    explicit RecordingProcessor(std::string* trace = nullptr, char name = '?', int id = -1)
        : InputProcessor(id), mTrace(trace), mName(name) {}
    bool processEvent(InputEvent& event) override {
        mTimestamps.push_back(event.getTimestamp());
        if (mTrace)
            *mTrace += mName;
        if (mAction)
            mAction(event);
        return mTakes;
    }
    std::string* mTrace;
    char mName;
    bool mTakes = false;
    std::function<void(InputEvent&)> mAction;
    Stamps mTimestamps;
};

// Sends one quit event per poll, and counts its polls.
class QuitProvider : public InputProvider {
public:
    bool needsPolling() override { return mNeedsPolling; }
    void pollEvents(std::int64_t timestamp) override {
        mPolls.push_back(timestamp);
        InputEvent event(timestamp);
        event.setEventType(InputEvent::SysWMEvent, *new SysWMEventInfo(SysWMEventInfo::SysWMQuit, 0, 0));
        sendEvent(event);
    }
    void send(InputEvent& event) { sendEvent(event); }
    bool mNeedsPolling = true;
    Stamps mPolls;
};

class InputManagerTest : public VelunTest::EngineTest {
protected:
    // The names of the processors that saw the event.
    std::string trigger(std::int64_t timestamp) {
        mTrace.clear();
        InputEvent event(timestamp);
        input().triggerInputEvent(event);
        return mTrace;
    }
    InputManager& input() { return core.getInputManager(); }
    void pollInput() { core.getProcessManager().updateSubsystem(1, true); }
    std::string mTrace;
};

TEST_F(InputManagerTest, ProcessorsSeeEventsInRegistrationOrderUntilOneTakesItAndOneIdOnlyOnce) {
    RecordingProcessor a(&mTrace, 'a'), b(&mTrace, 'b'), c(&mTrace, 'c');
    // Ids decide nothing: c has the highest id and goes first. A second registration keeps the place.
    for (RecordingProcessor* p : {&c, &a, &b, &a})
        input().registerInputProcessor(*p);
    EXPECT_EQ("cab", trigger(1));
    a.mTakes = true;
    EXPECT_EQ("ca", trigger(2));
    a.setEnabled(false);
    EXPECT_EQ("cb", trigger(3));

    // One with c's id replaces c; one destroyed leaves the chain.
    RecordingProcessor twin(&mTrace, 't', c.getProcessorId());
    input().registerInputProcessor(twin);
    {
        RecordingProcessor gone(&mTrace, 'g');
        input().registerInputProcessor(gone);
    }
    EXPECT_EQ("bt", trigger(4));
}

TEST_F(InputManagerTest, ChangesToTheChainDuringTheWalkSkipNobody) {
    RecordingProcessor a(&mTrace, 'a'), leaving(&mTrace, 'l'), b(&mTrace, 'b'), c(&mTrace, 'c'),
        added(&mTrace, 'n');
    // Leaving takes itself out; b takes out the earlier a and adds one at the end.
    leaving.mAction = [&](InputEvent&) { input().unregisterInputProcessor(leaving); };
    b.mAction = [&](InputEvent&) {
        input().unregisterInputProcessor(a);
        input().registerInputProcessor(added);
    };
    for (RecordingProcessor* p : {&a, &leaving, &b, &c})
        input().registerInputProcessor(*p);
    EXPECT_EQ("albcn", trigger(1));
    EXPECT_EQ("bcn", trigger(2));
}

TEST_F(InputManagerTest, AnEnabledProviderIsPolledOncePerPassAndAQuitEndsTheLoopAfterThePass) {
    QuitProvider provider, leaving;
    RecordingProcessor processor;
    input().registerInputProvider(provider);
    input().registerInputProvider(provider);  // no second adapter
    input().registerInputProcessor(processor);
    ASSERT_EQ(1u, input().getProcessList()->size());
    EXPECT_EQ(1u, input().getInputProviderCount());
    input().getProcessList()->at(0)->run(77);
    EXPECT_EQ((Stamps{77}), provider.mPolls);
    EXPECT_EQ((Stamps{77}), processor.mTimestamps);

    provider.setEnabled(false);
    pollInput();
    provider.setEnabled(true);
    provider.mNeedsPolling = false;
    pollInput();
    EXPECT_EQ(1u, provider.mPolls.size());
    provider.mNeedsPolling = true;

    // A provider can be unregistered from inside its own poll.
    input().unregisterInputProvider(provider);
    input().registerInputProvider(leaving);
    input().registerInputProvider(provider);
    processor.mAction = [&](InputEvent&) { input().unregisterInputProvider(leaving); };
    pollInput();
    EXPECT_EQ(2u, provider.mPolls.size());
    pollInput();
    EXPECT_EQ(1u, leaving.mPolls.size());
    EXPECT_EQ(3u, provider.mPolls.size());
    EXPECT_EQ(1u, input().getProcessList()->size());

    // A processor that sees quit ends the loop after the pass; both may outlive the manager.
    std::size_t seen = processor.mTimestamps.size();
    processor.mAction = [&](InputEvent& event) {
        SysWMEventInfo* info = event.getSysWMEventInfo();
        if (info && info->getEventType() == SysWMEventInfo::SysWMQuit)
            core.getProcessManager().stop(false);
    };
    VelunTest::PassRecorder passes;
    EXPECT_EQ(0, core.getProcessManager().run(true));
    EXPECT_FALSE(core.getProcessManager().isRunning());
    EXPECT_EQ(seen + 1, processor.mTimestamps.size());
    // The subsystems after input still had their turn in the stopping pass.
    EXPECT_EQ(1u, passes.getPasses());

    core.shutdown();
    // Their destructors run after the manager has gone, and must not reach for it.
    InputEvent event(0);
    provider.send(event);
    EXPECT_EQ(seen + 1, processor.mTimestamps.size());
}

}  // namespace
