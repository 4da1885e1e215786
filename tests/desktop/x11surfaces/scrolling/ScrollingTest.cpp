// Touchpad gestures over windows of ours on a real server. A virtual server has no touchpad, so its events
// come from here, at the place where the toolkit passes on the server's own; its wheel is real.
#include "desktop/x11surfaces/SurfacesTest.h"
#include "platform/x11/input/X11ScrollGestures.h"

#include <QAbstractEventDispatcher>
#include <QProcess>
#include <cstring>
#include <xcb/xinput.h>

namespace marrowfin {

using platform::ScrollPhase;
using platform::ScrollStep;

namespace {
constexpr std::uint16_t touchpad = 77;
constexpr std::uint16_t across = 2;

std::vector<x11::ScrollDevice> oneTouchpad(const x11::Connection&) {
    return {{touchpad,
             x11::ScrollSource::Touchpad,
             x11::ScrollDirection::Traditional,
             x11::ScrollUnit::Points,
             {{across, Qt::Horizontal, 15}}}};
}

std::vector<x11::ScrollDevice> pointersAsTouchpads(const x11::Connection& c) {
    std::vector<x11::ScrollDevice> devices;
    const auto all =
        c.reply(xcb_input_xi_query_device_reply, xcb_input_xi_query_device(c.raw(), XCB_INPUT_DEVICE_ALL));
    for (auto it = xcb_input_xi_query_device_infos_iterator(all.get()); it.rem > 0;
         xcb_input_xi_device_info_next(&it)) {
        x11::ScrollDevice device = oneTouchpad(c).front();
        device.id = it.data->deviceid;
        device.axes.front().number = 0;
        devices.push_back(device);
    }
    return devices;
}

class ScrollingTest : public SurfacesTest {
protected:
    void SetUp() override {
        SurfacesTest::SetUp();
        qt = std::move(*x11::Connection::adoptQt());
        const xcb_query_extension_reply_t* input = xcb_get_extension_data(qt->raw(), &xcb_input_id);
        ASSERT_TRUE(input && input->present);
        opcode = input->major_opcode;
        gestures = std::make_unique<x11::X11ScrollGestures>(*qt, &oneTouchpad);
    }
    // Hands an event on as the toolkit does.
    template <class Event>
    void pass(Event& event, std::uint16_t type) {
        auto& head = reinterpret_cast<xcb_ge_generic_event_t&>(event);
        head.response_type = XCB_GE_GENERIC;
        head.extension = opcode;
        head.event_type = type;
        qintptr result = 0;
        EXPECT_FALSE(
            QAbstractEventDispatcher::instance()->filterNativeEvent("xcb_generic_event_t", &event, &result));
    }
    // The touchpad's axis stands here, over this window.
    void scrollTo(int position, const QWidget& over) {
        struct {
            xcb_input_motion_event_t event;
            std::uint32_t axes;
            xcb_input_fp3232_t value;
        } moved = {};
        moved.event.time = ++milliseconds;
        moved.event.sourceid = touchpad;
        moved.event.event = idOf(over);
        moved.event.valuators_len = 1;
        moved.axes = 1U << across;
        moved.value.integral = position;
        pass(moved, XCB_INPUT_MOTION);
    }
    void pointerComes() {
        xcb_input_enter_event_t entered = {};
        pass(entered, XCB_INPUT_ENTER);
    }

    std::unique_ptr<x11::Connection> qt;
    std::unique_ptr<x11::X11ScrollGestures> gestures;
    std::uint8_t opcode = 0;
    std::uint32_t milliseconds = 5000;
};

ScrollStep changed(double x) {
    return {ScrollPhase::Changed, {x, 0}};
}
} // namespace

TEST_F(ScrollingTest, StepsComeToTheWindowUnderTheFingersAlone) {
    Pane left(Qt::red);
    Pane right(Qt::green);
    const auto a = show(left, {}, QRectF(60, 80, 100, 100));
    const auto b = show(right, {}, QRectF(260, 80, 100, 100));
    std::vector<ScrollStep> toLeft;
    std::vector<ScrollStep> toRight;
    const auto first = gestures->watch(left, [&](const ScrollStep& step) { toLeft.push_back(step); });
    auto second = gestures->watch(right, [&](const ScrollStep& step) { toRight.push_back(step); });
    for (const int position : {100, 130, 125, 125})
        scrollTo(position, left);
    const std::vector<ScrollStep> gesture{
        {ScrollPhase::Began, {}}, changed(30), changed(-5), {ScrollPhase::Ended, {}}};
    EXPECT_EQ(toLeft, gesture);
    EXPECT_TRUE(toRight.empty());
    scrollTo(130, right);
    EXPECT_EQ(toRight, (std::vector<ScrollStep>{{ScrollPhase::Began, {5, 0}}}));
    pointerComes(); // from where it had scrolled on
    scrollTo(900, right);
    EXPECT_EQ(toRight.back(), changed(0));
    second.reset();
    scrollTo(950, right);
    EXPECT_EQ(toRight.size(), 2u);
}

TEST_F(ScrollingTest, AHandlerMayEndItsWatchAndDestroyItsWidget) {
    auto pane = std::make_unique<Pane>(Qt::red);
    auto surface = show(*pane, {}, QRectF(60, 80, 100, 100));
    int steps = 0;
    std::unique_ptr<platform::ScrollWatch> watch;
    watch = gestures->watch(*pane, [&](const ScrollStep&) {
        ++steps;
        watch.reset();
        surface.reset();
        pane.reset();
    });
    Pane other(Qt::green);
    const auto stays = show(other, {}, QRectF(260, 80, 100, 100));
    scrollTo(100, *pane);
    EXPECT_EQ(steps, 1);
    scrollTo(120, other);
    EXPECT_EQ(steps, 1);
}

TEST_F(ScrollingTest, WatchesMayOutliveTheService) {
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(60, 80, 100, 100));
    int steps = 0;
    auto watch = gestures->watch(pane, [&](const ScrollStep&) { ++steps; });
    scrollTo(100, pane);
    gestures.reset();
    scrollTo(120, pane);
    EXPECT_EQ(steps, 1);
    watch.reset();
}

// The server's events from the wire to the handler: its pointer's own first axis is taken for one that
// scrolls.
TEST_F(ScrollingTest, TheServersEventsArriveWithTheirAxes) {
    gestures = std::make_unique<x11::X11ScrollGestures>(*qt, &pointersAsTouchpads);
    Pane pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(60, 80, 400, 100));
    double way = 0;
    int steps = 0;
    const auto watch = gestures->watch(pane, [&](const ScrollStep& step) {
        way += step.phase == ScrollPhase::Changed ? step.delta.x() : 0;
        ++steps;
    });
    ASSERT_TRUE(shows(QPoint(100, 120), Qt::red));
    other.movePointer(native(QPoint(100, 120)));
    ASSERT_TRUE(desk::waitFor([&] { return steps > 0; }));
    way = 0;
    for (int x = 110; x <= 300; x += 10)
        other.movePointer(native(QPoint(x, 120)));
    EXPECT_TRUE(desk::waitFor([&] { return way == 200; })) << way;
    other.movePointer(native(QPoint(250, 120)));
    EXPECT_TRUE(desk::waitFor([&] { return way == 150; })) << way;
}

TEST_F(ScrollingTest, TheServersOwnWheelIsNone) {
    gestures = std::make_unique<x11::X11ScrollGestures>(*qt); // with the devices that there are
    for (const x11::ScrollDevice& device : x11::readScrollDevices(*qt))
        EXPECT_EQ(device.source, x11::ScrollSource::Wheel) << device.id;
    class Wheeled : public Pane {
    public:
        using Pane::Pane;
        int turns = 0;
        void wheelEvent(QWheelEvent*) override { ++turns; }
    } pane(Qt::red);
    const auto surface = show(pane, {}, QRectF(60, 80, 100, 100));
    int steps = 0;
    const auto watch = gestures->watch(pane, [&](const ScrollStep&) { ++steps; });
    other.movePointer(native(QPoint(100, 120)));
    for (const char* button : {"4", "5", "6", "7"})
        ASSERT_EQ(QProcess::execute("xdotool", {"click", "--repeat", "5", "--delay", "2", button}), 0);
    EXPECT_TRUE(desk::waitFor([&] { return pane.turns >= 20; }));
    EXPECT_EQ(steps, 0);
}

} // namespace marrowfin
