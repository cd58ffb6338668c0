#include <gtest/gtest.h>

#include "input/InputEvent.h"

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
