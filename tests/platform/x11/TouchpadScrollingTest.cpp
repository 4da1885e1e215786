// What the server says about scrolling becomes gestures: its descriptions of devices, its events, and the way
// that axes go under two fingers, as the two common drivers post them.
#include "platform/x11/input/TouchpadScrolling.h"
#include "platform/x11/input/ScrollDevices.h"

#include <cstring>
#include <gmock/gmock.h>

using namespace marrowfin::x11;
using marrowfin::platform::ScrollPhase;
using marrowfin::platform::ScrollStep;
using testing::ElementsAre;

namespace {

constexpr std::uint32_t window = 0x400007;
constexpr std::uint16_t across = 2;
constexpr std::uint16_t down = 3;

// One driver: in points, its notch is 15 of them.
ScrollDevice touchpad(ScrollDirection direction = ScrollDirection::Traditional) {
    return {12,
            ScrollSource::Touchpad,
            direction,
            ScrollUnit::Points,
            {{across, Qt::Horizontal, 15}, {down, Qt::Vertical, 15}}};
}
// The other: in units of the pad, 236 of them a notch; with natural scrolling its increments are negative.
ScrollDevice coarseTouchpad(ScrollDirection direction) {
    const double sign = direction == ScrollDirection::Natural ? -1 : 1;
    return {13,
            ScrollSource::Touchpad,
            direction,
            ScrollUnit::DeviceUnits,
            {{across, Qt::Horizontal, sign * 236}, {down, Qt::Vertical, sign * 236}}};
}

class Fingers {
public:
    explicit Fingers(const ScrollDevice& device) : device(device.id) { scrolling.setDevices({device}); }

    std::optional<ScrollStep> at(std::uint32_t milliseconds, std::map<std::uint16_t, double> values,
                                 std::uint32_t over = window) {
        return scrolling.read({over, device, milliseconds, std::move(values)});
    }

    TouchpadScrolling scrolling;
    std::uint16_t device;
};

std::optional<ScrollStep> step(ScrollPhase phase, double x = 0, double y = 0) {
    return ScrollStep{phase, {x, y}};
}

} // namespace

TEST(TouchpadScrolling, AGestureBeginsGoesOnAndEndsWithAMovementOfNothing) {
    Fingers fingers(touchpad());
    EXPECT_EQ(fingers.at(1000, {{across, 480.0}}), step(ScrollPhase::Began));
    EXPECT_EQ(fingers.at(1008, {{across, 491.5}}), step(ScrollPhase::Changed, 11.5));
    EXPECT_EQ(fingers.at(1016, {{across, 503.0}, {down, -60.0}}), step(ScrollPhase::Changed, 11.5));
    EXPECT_EQ(fingers.at(1024, {{down, -57.25}}), step(ScrollPhase::Changed, 0, 2.75));
    EXPECT_EQ(fingers.at(1032, {{across, 503.0}, {down, -57.25}}), step(ScrollPhase::Ended));
    EXPECT_EQ(fingers.at(1040, {{across, 511.0}}), step(ScrollPhase::Began, 8));
}

TEST(TouchpadScrolling, APauseBeginsAnew) {
    Fingers fingers(touchpad());
    fingers.at(1000, {{across, 0.0}});
    EXPECT_EQ(fingers.at(1250, {{across, 5.0}}), step(ScrollPhase::Changed, 5));
    EXPECT_EQ(fingers.at(1501, {{across, 9.0}}), step(ScrollPhase::Began, 4));
}

TEST(TouchpadScrolling, TheServersClockMayTurnOver) {
    Fingers fingers(touchpad());
    fingers.at(0xFFFFFFF0, {{across, 0.0}});
    EXPECT_EQ(fingers.at(8, {{across, 5.0}}), step(ScrollPhase::Changed, 5));
}

TEST(TouchpadScrolling, TheSignIsThatOfTheFingersHoweverTheContentMoves) {
    // To the right: the content goes left traditionally, and with the fingers when scrolling is natural.
    Fingers traditional(touchpad(ScrollDirection::Traditional));
    traditional.at(1000, {{across, 100.0}});
    EXPECT_EQ(traditional.at(1008, {{across, 120.0}}), step(ScrollPhase::Changed, 20));
    Fingers natural(touchpad(ScrollDirection::Natural));
    natural.at(1000, {{across, 100.0}});
    EXPECT_EQ(natural.at(1008, {{across, 80.0}}), step(ScrollPhase::Changed, 20));
}

TEST(TouchpadScrolling, UnitsOfThePadCountByTheNotch) {
    for (const ScrollDirection direction : {ScrollDirection::Traditional, ScrollDirection::Natural}) {
        // This driver's axis goes with the fingers either way; the sign is in its increment.
        Fingers fingers(coarseTouchpad(direction));
        fingers.at(1000, {{across, 7000.0}, {down, 0.0}});
        EXPECT_EQ(fingers.at(1012, {{across, 7236.0}}), step(ScrollPhase::Changed, 15));
        EXPECT_EQ(fingers.at(1024, {{down, -472.0}}), step(ScrollPhase::Changed, 0, -30));
    }
}

TEST(TouchpadScrolling, AWheelAPointerAndAStrangerAreNoGestures) {
    ScrollDevice wheel = touchpad();
    wheel.source = ScrollSource::Wheel;
    Fingers turning(wheel);
    turning.at(1000, {{down, 0.0}});
    EXPECT_EQ(turning.at(1010, {{down, 120.0}}), std::nullopt);
    Fingers pointing(touchpad());
    EXPECT_EQ(pointing.at(1000, {{0, 300.0}, {1, 200.0}}), std::nullopt);
    pointing.device = 99;
    EXPECT_EQ(pointing.at(1010, {{down, 10.0}}), std::nullopt);
}

TEST(TouchpadScrolling, WhatWasScrolledElsewhereIsNoWayOfTheFingersHere) {
    Fingers fingers(touchpad());
    fingers.at(1000, {{across, 0.0}});
    fingers.at(1010, {{across, 10.0}});
    fingers.scrolling.pointerCame();
    EXPECT_EQ(fingers.at(1020, {{across, 900.0}}), step(ScrollPhase::Changed));
    EXPECT_EQ(fingers.at(1030, {{across, 903.0}}), step(ScrollPhase::Changed, 3));
}

TEST(TouchpadScrolling, AGestureBelongsToTheWindowWhereItBegan) {
    Fingers fingers(touchpad());
    fingers.at(1000, {{across, 0.0}});
    fingers.at(1010, {{across, 80.0}}); // the card flies off, the next one falls under the pointer
    fingers.scrolling.pointerCame();
    EXPECT_EQ(fingers.at(1020, {{across, 160.0}}, window + 1), std::nullopt);
    EXPECT_EQ(fingers.at(1030, {{across, 240.0}}, window + 1), std::nullopt);
    EXPECT_EQ(fingers.at(1040, {{across, 240.0}}, window + 1), std::nullopt); // lifted
    EXPECT_EQ(fingers.at(1050, {{across, 248.0}}, window + 1), step(ScrollPhase::Began, 8));
}

TEST(TouchpadScrolling, AnAxisWithoutAnIncrementDoesNothing) {
    ScrollDevice broken = coarseTouchpad(ScrollDirection::Traditional);
    broken.axes = {{across, Qt::Horizontal, 0}};
    Fingers fingers(broken);
    fingers.at(1000, {{across, 0.0}});
    EXPECT_EQ(fingers.at(1010, {{across, 500.0}}), step(ScrollPhase::Ended));
}

namespace {

// Bytes as they come over the wire, little endian.
class Wire {
public:
    Wire& u8(std::uint8_t value) { return put(&value, 1); }
    Wire& u16(std::uint16_t value) { return put(&value, 2); }
    Wire& u32(std::uint32_t value) { return put(&value, 4); }
    Wire& skip(std::size_t count) {
        bytes.resize(bytes.size() + count);
        return *this;
    }
    // Whole part first, then the fraction.
    Wire& fixed(std::int32_t whole, std::uint32_t fraction = 0) {
        return u32(static_cast<std::uint32_t>(whole)).u32(fraction);
    }
    template <class T>
    const T& as() const {
        return *reinterpret_cast<const T*>(bytes.data());
    }

private:
    Wire& put(const void* value, std::size_t size) {
        const auto* first = static_cast<const std::uint8_t*>(value);
        bytes.insert(bytes.end(), first, first + size);
        return *this;
    }
    std::vector<std::uint8_t> bytes;
};

// A movement from device 12 through master pointer 2, with these axes after the pointer's two.
Wire motion(std::uint32_t axes) {
    Wire wire;
    wire.u8(35).u8(131).u16(97).u32(17).u16(XCB_INPUT_MOTION).u16(2);
    wire.u32(123456).u32(0).u32(0x1E9).u32(window).u32(0);
    wire.u32(97); // the library's whole sequence number
    wire.skip(16).u16(2).u16(1).u16(12).skip(2).u32(0);
    wire.skip(16 + 4);      // modifiers, group
    wire.u32(0).u32(0);     // two words of buttons
    wire.u32(0b11U | axes); // one word of axes
    wire.fixed(800).fixed(450, 0x40000000);
    return wire;
}

} // namespace

TEST(ScrollEvents, CarryTheAxesThatTheirMaskNames) {
    Wire wire = motion(1U << across | 1U << down);
    wire.fixed(511, 0x80000000).fixed(-58, 0xC0000000); // 511.5 and -57.25
    EXPECT_EQ(axisPositionsOf(wire.as<xcb_input_motion_event_t>()),
              (AxisPositions{window, 12, 123456, {{0, 800}, {1, 450.25}, {across, 511.5}, {down, -57.25}}}));
    Wire plain = motion(0);
    EXPECT_EQ(axisPositionsOf(plain.as<xcb_input_motion_event_t>()),
              (AxisPositions{window, 12, 123456, {{0, 800}, {1, 450.25}}}));
}

TEST(ScrollEvents, DevicesListTheirScrollAxesAmongTheirClasses) {
    Wire wire;
    wire.u16(12).u16(XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER).u16(2).u16(3).u16(8).u8(1).skip(1);
    wire.skip(8); // its name
    wire.u16(XCB_INPUT_DEVICE_CLASS_TYPE_VALUATOR).u16(11).u16(12).u16(across).skip(36);
    const auto scroll = [&wire](std::uint16_t axis, std::uint16_t kind, std::int32_t increment) {
        wire.u16(XCB_INPUT_DEVICE_CLASS_TYPE_SCROLL).u16(6).u16(12).u16(axis).u16(kind).skip(2).u32(0);
        wire.fixed(increment);
    };
    scroll(across, XCB_INPUT_SCROLL_TYPE_HORIZONTAL, 15);
    scroll(down, XCB_INPUT_SCROLL_TYPE_VERTICAL, -236);
    EXPECT_THAT(scrollAxesOf(wire.as<xcb_input_xi_device_info_t>()),
                ElementsAre(ScrollAxis{across, Qt::Horizontal, 15}, ScrollAxis{down, Qt::Vertical, -236}));
}
