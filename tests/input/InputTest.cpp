#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <vector>

#include "core/ProcessManager.h"
#include "core/VelunCore.h"
#include "input/InputDevice.h"
#include "input/InputEvent.h"
#include "input/InputManager.h"
#include "input/InputProcessor.h"
#include "input/InputProvider.h"
#include "support/Engine.h"
#include "support/PassRecorder.h"

using namespace Velun;

namespace {

// A key info that counts its destructions.
class CountedKeyInfo : public KeyEventInfo {
public:
    explicit CountedKeyInfo(int& deletions) : KeyEventInfo(KeyPressed, 0, 0, 0), mDeletions(deletions) {}
    ~CountedKeyInfo() override { ++mDeletions; }
    int& mDeletions;
};

}  // namespace

TEST(InputEventTest, OnlyTheAccessorOfTheTypeGivesTheInfo) {
    InputEvent event(0);
    Dorvan::Vector<float> axes;
    axes.add(3.0f);
    axes.add(4.0f);
    MoveEventInfo* move = new MoveEventInfo(axes);
    event.setEventType(InputEvent::MoveEvent, *move);
    EXPECT_EQ(InputEvent::MoveEvent, event.getEventType());
    EXPECT_EQ(1, event.getEventType());
    EXPECT_EQ(move, event.getMoveEventInfo());
    EXPECT_EQ(nullptr, event.getKeyEventInfo());
    EXPECT_EQ(nullptr, event.getButtonEventInfo());
    EXPECT_EQ(nullptr, event.getSysWMEventInfo());

    SysWMEventInfo* quit = new SysWMEventInfo(SysWMEventInfo::SysWMQuit, 0, 0);
    event.setEventType(InputEvent::SysWMEvent, *quit);
    EXPECT_EQ(quit, event.getSysWMEventInfo());
    EXPECT_EQ(nullptr, event.getMoveEventInfo());
}

TEST(InputEventTest, InfoOfAnotherClassThanTheTypeIsNotHandedOut) {
    InputEvent event(0);
    event.setEventType(InputEvent::KeyEvent, *new ButtonEventInfo(ButtonEventInfo::ButtonPressed, 1));
    EXPECT_EQ(nullptr, event.getKeyEventInfo());
    EXPECT_EQ(nullptr, event.getButtonEventInfo());
}

TEST(InputEventTest, EachInfoIsDeletedExactlyOnce) {
    int first = 0, second = 0;
    {
        InputEvent event(0);
        CountedKeyInfo* info = new CountedKeyInfo(first);
        event.setEventType(InputEvent::KeyEvent, *info);
        // Setting the same info again must not delete it.
        event.setEventType(InputEvent::KeyEvent, *info);
        EXPECT_EQ(0, first);
        event.setEventType(InputEvent::KeyEvent, *new CountedKeyInfo(second));
        EXPECT_EQ(1, first);
        EXPECT_EQ(0, second);
    }
    EXPECT_EQ(1, first);
    EXPECT_EQ(1, second);
}

TEST(InputEventInfoTest, MoveInfoGivesZeroForMissingAxes) {
    Dorvan::Vector<float> axes;
    axes.add(10.5f);
    axes.add(-2.0f);
    Dorvan::Vector<float> relative;
    relative.add(1.0f);
    MoveEventInfo info(axes, relative);
    EXPECT_EQ(2, info.getAxisCount());
    EXPECT_FLOAT_EQ(10.5f, info.getX());
    EXPECT_FLOAT_EQ(-2.0f, info.getY());
    EXPECT_FLOAT_EQ(0.0f, info.getZ());
    EXPECT_FLOAT_EQ(-2.0f, info.getAxis(1));
    EXPECT_EQ(1, info.getRelativeAxisCount());
    EXPECT_FLOAT_EQ(1.0f, info.getRelativeX());
    EXPECT_FLOAT_EQ(0.0f, info.getRelativeY());

    // The info keeps its own copy of the axes.
    axes.set(0, 99.0f);
    EXPECT_FLOAT_EQ(10.5f, info.getX());

    MoveEventInfo absoluteOnly(axes);
    EXPECT_EQ(0, absoluteOnly.getRelativeAxisCount());
    EXPECT_FLOAT_EQ(0.0f, absoluteOnly.getRelativeX());
}

namespace {

// Records the events it sees; takes them when told to, and runs an optional action first.
class RecordingProcessor : public InputProcessor {
public:
    explicit RecordingProcessor(bool takes = false, int id = -1) : InputProcessor(id), mTakes(takes) {}
    bool processEvent(InputEvent& event) override {
        mTimestamps.push_back(event.getTimestamp());
        if (mAction)
            mAction(event);
        return mTakes;
    }
    bool mTakes;
    std::function<void(InputEvent&)> mAction;
    std::vector<std::int64_t> mTimestamps;
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
    void addDevice(InputDevice& device) { registerDevice(device); }
    bool mNeedsPolling = true;
    std::vector<std::int64_t> mPolls;
};

class InputManagerTest : public VelunTest::EngineTest {
protected:
    void trigger(std::int64_t timestamp) {
        InputEvent event(timestamp);
        input().triggerInputEvent(event);
    }
    InputManager& input() { return core.getInputManager(); }
    void pollInput() { core.getProcessManager().updateSubsystem(1, true); }
};

}  // namespace

TEST_F(InputManagerTest, TheFirstProcessorThatTakesTheEventEndsTheChain) {
    RecordingProcessor a(true), b;
    input().registerInputProcessor(a);
    input().registerInputProcessor(b);
    trigger(1);
    EXPECT_EQ(1u, a.mTimestamps.size());
    EXPECT_EQ(0u, b.mTimestamps.size());

    a.mTakes = false;
    trigger(2);
    EXPECT_EQ(std::vector<std::int64_t>({1, 2}), a.mTimestamps);
    EXPECT_EQ(std::vector<std::int64_t>({2}), b.mTimestamps);

    a.mTakes = true;
    a.setEnabled(false);
    trigger(3);
    EXPECT_EQ(2u, a.mTimestamps.size());
    EXPECT_EQ(std::vector<std::int64_t>({2, 3}), b.mTimestamps);
}

TEST_F(InputManagerTest, ProcessorsSeeEventsInOrderOfRegistration) {
    std::vector<int> order;
    RecordingProcessor p1, p2, p3;
    p1.mAction = [&](InputEvent&) { order.push_back(1); };
    p2.mAction = [&](InputEvent&) { order.push_back(2); };
    p3.mAction = [&](InputEvent&) { order.push_back(3); };
    // Ids decide nothing: p3 has the highest id and goes first.
    input().registerInputProcessor(p3);
    input().registerInputProcessor(p1);
    input().registerInputProcessor(p2);
    input().registerInputProcessor(p1);  // a second registration keeps the place
    trigger(0);
    EXPECT_EQ(std::vector<int>({3, 1, 2}), order);
    EXPECT_EQ(&p3, input().getInputProcessorAt(0));
}

TEST_F(InputManagerTest, AProcessorAddedDuringTheWalkSeesTheSameEvent) {
    RecordingProcessor first, added;
    first.mAction = [&](InputEvent&) { input().registerInputProcessor(added); };
    input().registerInputProcessor(first);
    trigger(9);
    EXPECT_EQ(std::vector<std::int64_t>({9}), added.mTimestamps);
}

TEST_F(InputManagerTest, AProcessorThatUnregistersItselfDoesNotHideTheNextOne) {
    RecordingProcessor leaving, staying;
    leaving.mAction = [&](InputEvent&) { input().unregisterInputProcessor(leaving); };
    input().registerInputProcessor(leaving);
    input().registerInputProcessor(staying);
    trigger(1);
    trigger(2);
    EXPECT_EQ(std::vector<std::int64_t>({1}), leaving.mTimestamps);
    EXPECT_EQ(std::vector<std::int64_t>({1, 2}), staying.mTimestamps);
    EXPECT_EQ(1u, input().getInputProcessorCount());
}

TEST_F(InputManagerTest, UnregisteringAnEarlierProcessorDuringTheWalkSkipsNobody) {
    RecordingProcessor a, b, c;
    b.mAction = [&](InputEvent&) { input().unregisterInputProcessor(a); };
    input().registerInputProcessor(a);
    input().registerInputProcessor(b);
    input().registerInputProcessor(c);
    trigger(1);
    EXPECT_EQ(1u, a.mTimestamps.size());
    EXPECT_EQ(1u, b.mTimestamps.size());
    EXPECT_EQ(1u, c.mTimestamps.size());
}

TEST_F(InputManagerTest, ADestroyedProcessorLeavesTheChain) {
    RecordingProcessor staying;
    {
        RecordingProcessor temporary;
        input().registerInputProcessor(temporary);
        input().registerInputProcessor(staying);
        EXPECT_EQ(2u, input().getInputProcessorCount());
    }
    EXPECT_EQ(1u, input().getInputProcessorCount());
    trigger(4);
    EXPECT_EQ(1u, staying.mTimestamps.size());
}

TEST_F(InputManagerTest, AnotherProcessorWithTheSameIdReplacesTheFirst) {
    RecordingProcessor first(false, 7), second(false, 7);
    input().registerInputProcessor(first);
    input().registerInputProcessor(second);
    trigger(1);
    EXPECT_EQ(1u, input().getInputProcessorCount());
    EXPECT_TRUE(first.mTimestamps.empty());
    EXPECT_EQ(1u, second.mTimestamps.size());
}

TEST_F(InputManagerTest, ARegisteredProviderIsPolledOncePerPassWithThePassTime) {
    QuitProvider provider;
    RecordingProcessor processor;
    input().registerInputProvider(provider);
    input().registerInputProvider(provider);  // no second adapter
    input().registerInputProcessor(processor);
    ASSERT_EQ(1u, input().getProcessList()->size());
    EXPECT_EQ(1u, input().getInputProviderCount());

    input().getProcessList()->at(0)->run(77);
    EXPECT_EQ(std::vector<std::int64_t>({77}), provider.mPolls);
    EXPECT_EQ(std::vector<std::int64_t>({77}), processor.mTimestamps);
}

TEST_F(InputManagerTest, ADisabledProviderOrOneWithoutPollingIsNotPolled) {
    QuitProvider provider;
    input().registerInputProvider(provider);
    provider.setEnabled(false);
    pollInput();
    EXPECT_TRUE(provider.mPolls.empty());

    provider.setEnabled(true);
    provider.mNeedsPolling = false;
    pollInput();
    EXPECT_TRUE(provider.mPolls.empty());

    provider.mNeedsPolling = true;
    pollInput();
    EXPECT_EQ(1u, provider.mPolls.size());
}

TEST_F(InputManagerTest, AProviderCanBeUnregisteredFromInsideItsOwnPoll) {
    QuitProvider first, second;
    RecordingProcessor processor;
    processor.mAction = [&](InputEvent&) { input().unregisterInputProvider(first); };
    input().registerInputProvider(first);
    input().registerInputProvider(second);
    input().registerInputProcessor(processor);

    pollInput();
    EXPECT_EQ(1u, first.mPolls.size());
    EXPECT_EQ(1u, second.mPolls.size());
    EXPECT_EQ(1u, input().getInputProviderCount());

    pollInput();
    EXPECT_EQ(1u, first.mPolls.size());
    EXPECT_EQ(2u, second.mPolls.size());
    EXPECT_EQ(1u, input().getProcessList()->size());
}

TEST_F(InputManagerTest, AProcessorThatSeesQuitEndsTheLoopAfterThePass) {
    QuitProvider provider;
    RecordingProcessor quitter(true);
    quitter.mAction = [&](InputEvent& event) {
        SysWMEventInfo* info = event.getSysWMEventInfo();
        if (info && info->getEventType() == SysWMEventInfo::SysWMQuit)
            core.getProcessManager().stop(false);
    };
    input().registerInputProvider(provider);
    input().registerInputProcessor(quitter);
    VelunTest::PassRecorder passes;

    EXPECT_EQ(0, core.getProcessManager().run(true));
    EXPECT_FALSE(core.getProcessManager().isRunning());
    EXPECT_EQ(1u, quitter.mTimestamps.size());
    // The subsystems after input still had their turn in the stopping pass.
    EXPECT_EQ(1u, passes.getPasses());
}

TEST_F(InputManagerTest, ProvidersAndProcessorsMayOutliveTheManager) {
    QuitProvider provider;
    RecordingProcessor processor;
    input().registerInputProvider(provider);
    input().registerInputProcessor(processor);
    core.shutdown();
    // Their destructors run after the manager has gone, and must not reach for it.
    InputEvent event(0);
    provider.send(event);
    EXPECT_TRUE(processor.mTimestamps.empty());
}
