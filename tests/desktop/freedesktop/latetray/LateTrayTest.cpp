// A desktop without any status area, on which one appears later, goes and comes back.
#include "desktop/freedesktop/support/NotifierDesktop.h"
#include "desktop/x11desktop/support/Tray.h"
#include "platform/freedesktop/NotifierHostWatch.h"

#include <QTemporaryFile>
#include <utility>

using namespace marrowfin;
using namespace marrowfin::testsupport;

namespace {

// What the window names as the window manager's own; empty when it, or the window, isn't there.
QByteArray managerNamedBy(const QStringList& window) {
    const auto said = runProgram(QStringLiteral("xprop"), window + QStringList{"_NET_SUPPORTING_WM_CHECK"});
    const auto at = said.output.lastIndexOf("# ");
    return said.exitCode == 0 && at >= 0 ? said.output.mid(at + 2).trimmed() : QByteArray();
}

// The panel waits a quarter of a minute for a window manager before it goes on without one; and one that has
// only said that it is there loses the windows that come before it has begun.
class WindowManager {
public:
    WindowManager() {
        process.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
        EXPECT_TRUE(waitUntil([] {
            const QByteArray named = managerNamedBy({"-root"});
            return !named.isEmpty() && managerNamedBy({"-id", QString::fromLatin1(named)}) == named;
        }));
        QWidget probe;
        probe.show();
        const QString id = QString::number(probe.winId());
        EXPECT_TRUE(waitUntil([&id] {
            xdotool({QStringLiteral("windowmap"), id});
            return runProgram(QStringLiteral("xprop"),
                              {QStringLiteral("-id"), id, QStringLiteral("WM_STATE")})
                .output.contains("Normal");
        }));
    }
    ~WindowManager() {
        process.terminate();
        waitUntil([this] { return process.state() == QProcess::NotRunning; });
    }

private:
    QProcess process;
};

class Tint2 {
public:
    explicit Tint2(const QByteArray& color = "#303030") {
        EXPECT_TRUE(configuration.open());
        configuration.write("panel_items = S\npanel_position = top center horizontal\npanel_size = 100% 40\n"
                            "systray_icon_size = 32\nwm_menu = 0\nrounded = 0\nborder_width = 0\n"
                            "background_color = " +
                            color + " 100\npanel_background_id = 1\n");
        configuration.flush();
        process.start(QStringLiteral("tint2"), {QStringLiteral("-c"), configuration.fileName()});
    }
    ~Tint2() {
        process.terminate();
        waitUntil([this] { return process.state() == QProcess::NotRunning; });
    }

private:
    QTemporaryFile configuration;
    QProcess process;
};

class LateTray : public TrayTest {
protected:
    // One that knows that there is no host on D-Bus: it asked before a watch of ours did, which has its
    // answer.
    std::unique_ptr<platform::StatusItem> makeItem(DrawerLog& drawings) {
        auto item = statusBar.makeItem();
        item->setIcon(drawings.drawer());
        const freedesktop::NotifierHostWatch watch;
        EXPECT_TRUE(
            waitUntil([&watch] { return watch.host() == freedesktop::NotifierHostWatch::Host::Absent; }));
        return item;
    }
};

} // namespace

TEST_F(LateTray, isServedWhenItComesAndWhenItComesBack) {
    const WindowManager manager;
    DrawerLog drawings;
    testing::internal::CaptureStderr();
    const auto item = makeItem(drawings);
    int clicks = 0;
    item->setAction([&clicks](platform::StatusItemButton) { ++clicks; });
    for (int round = 1; round <= 2; ++round) {
        const Tint2 tray;
        ASSERT_TRUE(iconShows()) << "round " << round;
        // The tray makes room for it first.
        QRect place;
        ASSERT_TRUE(waitUntil(
            [&place] { return std::exchange(place, iconOnScreen()) == place && !place.isEmpty(); }));
        movePointer(place.center());
        pressButton(1);
        releaseButton(1);
        EXPECT_TRUE(waitUntil([&] { return clicks == round; }));
    }
    EXPECT_TRUE(iconIsGone());
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said.find("[Marrowfin] No status area"), said.rfind("[Marrowfin] No status area"));
    EXPECT_NE(said.find("[Marrowfin] No status area: the icon shows up when there is one\n"),
              std::string::npos);
}

TEST_F(LateTray, soIsAHostOnDBus) {
    DrawerLog drawings;
    const auto item = makeItem(drawings);
    NotifierDesktop desktop(false);
    desktop.setHost(true);
    EXPECT_TRUE(waitUntil([&desktop] { return desktop.items.size() == 1; }));
}

TEST_F(LateTray, theIconIsDrawnForTheTrayThatItStandsIn) {
    const WindowManager manager;
    DrawerLog drawings;
    const auto item = makeItem(drawings);
    const Tint2 tray("#f4f4f4");
    ASSERT_TRUE(iconShows());
    EXPECT_TRUE(waitUntil([&drawings] { return !drawings.last().darkTray; }));
}
