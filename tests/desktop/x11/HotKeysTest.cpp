// Global hot keys on the lane's desktop, pressed by XTest as a person would, with another client as the
// rival.
#include "platform/x11/input/KeyboardMap.h"
#include "platform/x11/input/X11HotKeys.h"
#include "platform/x11/server/Xkb.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <gmock/gmock.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

using namespace marrowfin;
using namespace marrowfin::platform;
using namespace marrowfin::x11;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint32_t superShift = modifierCommand + modifierShift;
constexpr std::uint8_t keyOf3 = 12;
constexpr std::uint8_t keyOf4 = 13;
constexpr std::uint8_t keyOf5 = 14;
constexpr std::uint8_t shiftKey = 50;
constexpr std::uint8_t superKey = 133;

HotKeyRegistration registered(X11HotKeys& keys, std::uint32_t keyCode, std::uint32_t id,
                              HotKeyHandlerRef handler = 0) {
    std::optional<HotKeyRegistration> answer;
    keys.registerHotKey({keyCode, superShift, {0x4B56454C, id}, {}, handler})
        .then([&](Result<HotKeyRegistration> r) { answer = r.value(); });
    while (!answer)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return *answer;
}

class HotKeys : public testing::Test {
protected:
    void SetUp() override {
        qt = *Connection::adoptQt();
        rival = *Connection::open();
        keys = std::make_unique<X11HotKeys>(*qt);
        handler = keys->installHandler([this](HotKeyID id) {
                          pressed.push_back(id.id);
                          return hotKeyNoError;
                      })
                      .reference;
    }
    void TearDown() override {
        keys.reset();
        lock(0);
    }

    void type(std::uint8_t kind, std::uint8_t key) {
        // The server waits so many milliseconds before the event. No finger is faster: release and press of
        // the same millisecond are its own repetition.
        constexpr std::uint32_t delay = 2;
        rival->check(xcb_test_fake_input_checked(rival->raw(), kind, key, delay, XCB_WINDOW_NONE, 0, 0, 0));
    }
    void chord(std::uint8_t key) {
        type(XCB_KEY_PRESS, superKey);
        type(XCB_KEY_PRESS, shiftKey);
        type(XCB_KEY_PRESS, key);
        type(XCB_KEY_RELEASE, key);
        type(XCB_KEY_RELEASE, shiftKey);
        type(XCB_KEY_RELEASE, superKey);
    }
    // The lock modifiers exactly so, as their lamps would show.
    void lock(std::uint8_t modifiers, std::uint8_t group = 0) {
        rival->check(xcb_xkb_latch_lock_state_checked(rival->raw(), XCB_XKB_ID_USE_CORE_KBD, 0xFF, modifiers,
                                                      1, group, 0, 0, 0));
    }
    void waitForPresses(std::size_t count) {
        QElapsedTimer patience;
        patience.start();
        while (pressed.size() < count && patience.elapsed() < 10000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    void run(const QString& program, const QStringList& arguments) {
        ASSERT_EQ(QProcess::execute(program, arguments), 0) << program.toStdString();
    }

    std::unique_ptr<Connection> qt;
    std::unique_ptr<Connection> rival;
    std::unique_ptr<X11HotKeys> keys;
    HotKeyHandlerRef handler = 0;
    std::vector<std::uint32_t> pressed;
};

} // namespace

TEST_F(HotKeys, ReachUsWhateverIsInFront) {
    EXPECT_EQ(registered(*keys, keyCode3, 1).status, hotKeyNoError);
    EXPECT_EQ(registered(*keys, keyCode4, 2).status, hotKeyNoError);
    EXPECT_EQ(registered(*keys, keyCode5, 3).status, hotKeyNoError);
    chord(keyOf4);
    chord(keyOf3);
    chord(keyOf5);
    waitForPresses(3);
    EXPECT_THAT(pressed, ElementsAre(2, 1, 3));
}

TEST_F(HotKeys, WorkUnderEveryLock) {
    registered(*keys, keyCode3, 1);
    const KeyboardMap map = readKeyboard(*rival);
    ASSERT_NE(map.numLock, 0);
    std::size_t expected = 0;
    for (int locks = 0; locks < 8; ++locks) {
        lock(static_cast<std::uint8_t>((locks & 1 ? XCB_MOD_MASK_LOCK : 0) | (locks & 2 ? map.numLock : 0) |
                                       (locks & 4 ? map.scrollLock : 0)));
        chord(keyOf3);
        waitForPresses(++expected);
        ASSERT_EQ(pressed.size(), expected) << "locks " << locks;
    }
}

TEST_F(HotKeys, WorkInTheSecondLayout) {
    run(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), QStringLiteral("us,ru")});
    registered(*keys, keyCode3, 1);
    lock(0, 1);
    chord(keyOf3);
    waitForPresses(1);
    EXPECT_THAT(pressed, ElementsAre(1));
    run(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), QStringLiteral("us")});
}

TEST_F(HotKeys, StayOnTheirPhysicalKeyWhenTheLayoutChanges) {
    registered(*keys, keyCode3, 1);
    run(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), QStringLiteral("fr")});
    chord(keyOf3);
    waitForPresses(1);
    EXPECT_THAT(pressed, ElementsAre(1));
    run(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), QStringLiteral("us")});
}

TEST_F(HotKeys, FollowSuperToAnotherKey) {
    registered(*keys, keyCode3, 1);
    // Super and Menu change places: Super is now on keycode 135.
    run(QStringLiteral("setxkbmap"), {QStringLiteral("-layout"), QStringLiteral("us"),
                                      QStringLiteral("-option"), QStringLiteral("altwin:swap_alt_win")});
    const std::uint8_t leftAlt = 64;
    for (int attempt = 0; attempt < 200 && pressed.empty(); ++attempt) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        type(XCB_KEY_PRESS, leftAlt);
        type(XCB_KEY_PRESS, shiftKey);
        type(XCB_KEY_PRESS, keyOf3);
        type(XCB_KEY_RELEASE, keyOf3);
        type(XCB_KEY_RELEASE, shiftKey);
        type(XCB_KEY_RELEASE, leftAlt);
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    EXPECT_FALSE(pressed.empty());
    run(QStringLiteral("setxkbmap"),
        {QStringLiteral("-layout"), QStringLiteral("us"), QStringLiteral("-option"), QString()});
}

TEST_F(HotKeys, DropAutoRepeat) {
    registered(*keys, keyCode3, 1);
    registered(*keys, keyCode4, 2);
    run(QStringLiteral("xset"),
        {QStringLiteral("r"), QStringLiteral("rate"), QStringLiteral("30"), QStringLiteral("100")});
    type(XCB_KEY_PRESS, superKey);
    type(XCB_KEY_PRESS, shiftKey);
    type(XCB_KEY_PRESS, keyOf3);
    waitForPresses(1);
    QElapsedTimer held;
    held.start();
    while (held.elapsed() < 500)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    type(XCB_KEY_RELEASE, keyOf3);
    // A second press is a press again.
    type(XCB_KEY_PRESS, keyOf3);
    type(XCB_KEY_RELEASE, keyOf3);
    type(XCB_KEY_PRESS, keyOf4);
    type(XCB_KEY_RELEASE, keyOf4);
    type(XCB_KEY_RELEASE, shiftKey);
    type(XCB_KEY_RELEASE, superKey);
    waitForPresses(3);
    EXPECT_THAT(pressed, ElementsAre(1, 1, 2));
}

TEST_F(HotKeys, ThatAreTakenAreReportedAndTheOthersWork) {
    // Under one lock only: the whole key counts as taken, and its other combinations are given back.
    const KeyboardMap map = readKeyboard(*rival);
    const auto state = static_cast<std::uint16_t>(map.super | XCB_MOD_MASK_SHIFT | map.numLock);
    ASSERT_EQ(rival->check(xcb_grab_key_checked(rival->raw(), 0, rival->root(), state, keyOf4,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)),
              0);
    EXPECT_EQ(registered(*keys, keyCode3, 1).status, hotKeyNoError);
    const HotKeyRegistration taken = registered(*keys, keyCode4, 2);
    EXPECT_EQ(taken.status, hotKeyExists);
    EXPECT_EQ(taken.reference, 0U);
    EXPECT_EQ(registered(*keys, keyCode5, 3).status, hotKeyNoError);
    chord(keyOf4);
    chord(keyOf5);
    waitForPresses(1);
    EXPECT_THAT(pressed, ElementsAre(3));
    // What was given back is free for others.
    const auto plain = static_cast<std::uint16_t>(map.super | XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(rival->check(xcb_grab_key_checked(rival->raw(), 0, rival->root(), plain, keyOf4,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)),
              0);
    xcb_ungrab_key(rival->raw(), keyOf4, rival->root(), XCB_MOD_MASK_ANY);
    rival->sync();
    EXPECT_EQ(registered(*keys, keyCode4, 2).status, hotKeyNoError);
}

// As some desktops hold theirs: the two kinds of grab don't see each other.
TEST_F(HotKeys, ThatAreTakenByXInputAreReported) {
    const KeyboardMap map = readKeyboard(*rival);
    const std::uint32_t state = map.super | XCB_MOD_MASK_SHIFT;
    const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    const auto grab = [&] {
        const auto answer = rival->reply(
            xcb_input_xi_passive_grab_device_reply,
            xcb_input_xi_passive_grab_device(
                rival->raw(), XCB_CURRENT_TIME, rival->root(), XCB_CURSOR_NONE, keyOf4,
                XCB_INPUT_DEVICE_ALL_MASTER, 1, 1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC,
                XCB_GRAB_MODE_ASYNC, XCB_INPUT_GRAB_OWNER_NO_OWNER, &mask, &state));
        return answer && answer->num_modifiers == 0;
    };
    ASSERT_TRUE(grab());
    EXPECT_EQ(registered(*keys, keyCode4, 2).status, hotKeyExists);
    EXPECT_EQ(registered(*keys, keyCode3, 1).status, hotKeyNoError);
    xcb_input_xi_passive_ungrab_device(rival->raw(), rival->root(), keyOf4, XCB_INPUT_DEVICE_ALL_MASTER, 1,
                                       XCB_INPUT_GRAB_TYPE_KEYCODE, &state);
    rival->sync();
    const HotKeyRegistration free = registered(*keys, keyCode4, 2);
    EXPECT_EQ(free.status, hotKeyNoError);
    EXPECT_FALSE(grab());
    chord(keyOf4);
    waitForPresses(1);
    EXPECT_THAT(pressed, ElementsAre(2));
    keys->unregisterHotKey(free.reference);
    qt->sync();
    EXPECT_TRUE(grab());
}

TEST_F(HotKeys, AreFreeForOthersAfterwards) {
    const HotKeyRegistration mine = registered(*keys, keyCode3, 1);
    EXPECT_EQ(registered(*keys, keyCode3, 9).status, hotKeyExists); // twice is a conflict with ourselves
    const KeyboardMap map = readKeyboard(*rival);
    const auto state = static_cast<std::uint16_t>(map.super | XCB_MOD_MASK_SHIFT);
    const auto grab = [&] {
        return rival->check(xcb_grab_key_checked(rival->raw(), 0, rival->root(), state, keyOf3,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    };
    EXPECT_EQ(grab(), XCB_ACCESS);
    keys->unregisterHotKey(mine.reference);
    qt->sync();
    EXPECT_EQ(grab(), 0);
    xcb_ungrab_key(rival->raw(), keyOf3, rival->root(), XCB_MOD_MASK_ANY);
    rival->sync();
    EXPECT_EQ(registered(*keys, keyCode3, 1).status, hotKeyNoError);
}

TEST_F(HotKeys, WithoutAHandlerDoNothing) {
    registered(*keys, keyCode3, 1);
    registered(*keys, keyCode4, 2);
    keys->removeHandler(handler);
    chord(keyOf3);
    bool seen = false;
    // The press has been through when a later one of ours was handled.
    keys->installHandler([&](HotKeyID id) {
        seen = id.id == 2;
        return hotKeyNoError;
    });
    chord(keyOf4);
    while (!seen)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_THAT(pressed, IsEmpty());
}

TEST_F(HotKeys, RefuseAKeyThatTheyDontKnow) {
    EXPECT_NE(registered(*keys, 99, 1).status, hotKeyNoError);
}

TEST_F(HotKeys, GoToTheHandlerThatTheyWereRegisteredFor) {
    registered(*keys, keyCode3, 1, handler);
    registered(*keys, keyCode4, 2);
    std::vector<std::uint32_t> others;
    keys->installHandler([&](HotKeyID id) {
        others.push_back(id.id);
        return hotKeyNoError;
    });
    chord(keyOf3);
    chord(keyOf4);
    while (others.empty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_THAT(pressed, ElementsAre(1));
    EXPECT_THAT(others, ElementsAre(2));
    EXPECT_EQ(keys->postEvent({0x4B56454C, 1}), hotKeyNoError);
    EXPECT_THAT(pressed, ElementsAre(1, 1));
}
