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

TEST(InputEventTest, NewEventHasTimestampAndNoInfo) {
    InputEvent event(1234567890123LL);
    EXPECT_EQ(1234567890123LL, event.getTimestamp());
    EXPECT_EQ(-1, event.getWindowId());
    EXPECT_EQ(nullptr, event.getInputDevice());
    EXPECT_EQ(nullptr, event.getKeyEventInfo());
    EXPECT_EQ(nullptr, event.getMoveEventInfo());
    EXPECT_EQ(nullptr, event.getButtonEventInfo());
    EXPECT_EQ(nullptr, event.getSysWMEventInfo());
}

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

TEST(InputEventTest, WindowAndDeviceAreKept) {
    InputEvent event(0);
    InputDevice* device = reinterpret_cast<InputDevice*>(0x10);
    event.setWindowId(7);
    event.setInputDevice(device);
    EXPECT_EQ(7, event.getWindowId());
    EXPECT_EQ(device, event.getInputDevice());
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

TEST(InputEventInfoTest, ModifierGroupsCoverBothSides) {
    EXPECT_EQ(KeyEventInfo::ModShift, KeyEventInfo::ModLeftShift | KeyEventInfo::ModRightShift);
    EXPECT_EQ(KeyEventInfo::ModCtrl, KeyEventInfo::ModLeftCtrl | KeyEventInfo::ModRightCtrl);
    EXPECT_EQ(KeyEventInfo::ModAlt, KeyEventInfo::ModLeftAlt | KeyEventInfo::ModRightAlt);
    EXPECT_EQ(KeyEventInfo::ModMeta, KeyEventInfo::ModLeftMeta | KeyEventInfo::ModRightMeta);
    // Caps Lock counts among the held keys; Num Lock and Mode do not.
    EXPECT_EQ(KeyEventInfo::ModKeys, KeyEventInfo::ModShift | KeyEventInfo::ModCtrl | KeyEventInfo::ModAlt |
                                         KeyEventInfo::ModMeta | KeyEventInfo::ModCapsLock);
    EXPECT_EQ(0, KeyEventInfo::ModKeys & (KeyEventInfo::ModNumLock | KeyEventInfo::ModMode));
}

TEST(InputEventInfoTest, InfosKeepTheirFields) {
    KeyEventInfo key(KeyEventInfo::KeyReleased, 38, 97, KeyEventInfo::ModLeftShift, 'A');
    EXPECT_EQ(KeyEventInfo::KeyReleased, key.getEventType());
    EXPECT_EQ(38, key.getKeycode());
    EXPECT_EQ(97, key.getKeySymbol());
    EXPECT_EQ(KeyEventInfo::ModLeftShift, key.getModifierMask());
    EXPECT_EQ('A', key.getUnicode());
    EXPECT_EQ(0, KeyEventInfo(KeyEventInfo::KeyPressed, 1, 2, 3).getUnicode());

    ButtonEventInfo button(ButtonEventInfo::ButtonReleased, 3, 120, 45);
    EXPECT_EQ(1, button.getEventType());
    EXPECT_EQ(3, button.getButtonNr());
    EXPECT_EQ(120, button.getX());
    EXPECT_EQ(45, button.getY());

    SysWMEventInfo resize(SysWMEventInfo::SysWMResize, 640, 480);
    EXPECT_EQ(2, resize.getEventType());
    EXPECT_EQ(640, resize.getWidth());
    EXPECT_EQ(480, resize.getHeight());
}
