// The status item with a tray that embeds windows, and with hosts that come and go on D-Bus.
#include "desktop/freedesktop/support/NotifierDesktop.h"
#include "desktop/x11desktop/support/Tray.h"

#include <QMenu>
#include <QPointer>

using namespace marrowfin;
using namespace marrowfin::testsupport;
using platform::StatusItemButton;

namespace {

constexpr int leftButton = 1;
constexpr int rightButton = 3;

class StatusItemTest : public TrayTest {
protected:
    StatusItemTest() {
        item = statusBar.makeItem();
        item->setIcon(drawings.drawer());
        item->setToolTip(QStringLiteral("Marrowfin"));
        item->setAction([this](StatusItemButton button) {
            clicks.push_back(button);
            if (onClick)
                onClick();
        });
    }
    ~StatusItemTest() override {
        item.reset();
        iconIsGone();
    }

    double ratio() const { return QGuiApplication::primaryScreen()->devicePixelRatio(); }
    void clickIcon(int button) {
        // As a hand does: from elsewhere.
        movePointer({20, 20});
        movePointer(iconOnScreen().center());
        pressButton(button);
        releaseButton(button);
    }

    DrawerLog drawings;
    std::unique_ptr<platform::StatusItem> item;
    std::vector<StatusItemButton> clicks;
    std::function<void()> onClick;
};

} // namespace

TEST_F(StatusItemTest, standsInTheTrayAtTheTraysOwnSize) {
    ASSERT_TRUE(iconShows());
    const QRect shown = iconOnScreen();
    EXPECT_EQ(shown.width(), shown.height());
    // Drawn for just these pixels, not scaled from another size.
    EXPECT_EQ(drawings.last().pixels, shown.width());
}

TEST_F(StatusItemTest, theTrayShowsThroughWhereTheIconIsEmpty) {
    ASSERT_TRUE(iconShows());
    constexpr QRgb panel = 0xFF303030; // as the desktop's panel is configured
    EXPECT_TRUE(waitUntil([] {
        const QImage shot = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
        const QRect icon = iconOnScreen();
        return shot.pixel(icon.topLeft()) == panel && shot.pixel(icon.bottomRight()) == panel;
    }));
}

TEST_F(StatusItemTest, eitherButtonActsWhenItIsReleased) {
    ASSERT_TRUE(iconShows());
    movePointer({20, 20});
    movePointer(iconOnScreen().center());
    for (const auto& [number, button] :
         {std::pair(leftButton, StatusItemButton::Left), std::pair(rightButton, StatusItemButton::Right)}) {
        clicks.clear();
        pressButton(number);
        // A second connection's round trip through the server: the press has come by then.
        iconOnScreen();
        QCoreApplication::processEvents();
        EXPECT_TRUE(clicks.empty());
        releaseButton(number);
        ASSERT_TRUE(waitUntil([this] { return !clicks.empty(); }));
        EXPECT_EQ(clicks, std::vector{button});
    }
}

TEST_F(StatusItemTest, theMenuOpensAtTheItemAndItsRowsWork) {
    QPointer<QMenu> menu;
    bool chosen = false;
    bool returnedWhileOpen = false;
    onClick = [&] {
        menu = new QMenu;
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addAction(QStringLiteral("Row"), [&chosen] { chosen = true; });
        item->popUp(*menu);
        returnedWhileOpen = menu && menu->isVisible();
    };
    ASSERT_TRUE(iconShows());
    const QRect icon = iconOnScreen();
    clickIcon(rightButton);
    ASSERT_TRUE(waitUntil([&] { return menu && menu->isVisible(); }));
    EXPECT_TRUE(returnedWhileOpen);
    const QRect frame(menu->geometry().topLeft() * ratio(), menu->geometry().size() * ratio());
    EXPECT_LE(std::abs(frame.bottom() - icon.top()), 8 * ratio()); // the panel is at the bottom
    EXPECT_LE(frame.left(), icon.right());
    EXPECT_GE(frame.right(), icon.left());

    movePointer(frame.topLeft() + QPoint(menu->actionGeometry(menu->actions().first()).center() * ratio()));
    pressButton(leftButton);
    releaseButton(leftButton);
    EXPECT_TRUE(waitUntil([&chosen] { return chosen; }));
    EXPECT_TRUE(waitUntil([&menu] { return !menu; }));
}

TEST_F(StatusItemTest, aClickElsewhereClosesTheMenu) {
    QPointer<QMenu> menu;
    onClick = [&] {
        menu = new QMenu;
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addAction(QStringLiteral("Row"));
        item->popUp(*menu);
    };
    ASSERT_TRUE(iconShows());
    clickIcon(leftButton);
    ASSERT_TRUE(waitUntil([&] { return menu && menu->isVisible(); }));
    movePointer({20, 20});
    pressButton(leftButton);
    releaseButton(leftButton);
    EXPECT_TRUE(waitUntil([&menu] { return !menu; }));
}

TEST_F(StatusItemTest, movesToAHostAndBackAndIsNeverTwice) {
    ASSERT_TRUE(iconShows());
    {
        NotifierDesktop desktop;
        ASSERT_TRUE(waitUntil([&desktop] { return desktop.items.size() == 1; }));
        EXPECT_TRUE(iconIsGone());
        desktop.setHost(false);
        EXPECT_TRUE(waitUntil([&desktop] { return desktop.items.isEmpty(); }));
        EXPECT_TRUE(iconShows());
        desktop.setHost(true);
        EXPECT_TRUE(waitUntil([&desktop] { return desktop.items.size() == 1; }));
        EXPECT_TRUE(iconIsGone());
    }
    EXPECT_TRUE(iconShows());
}

TEST_F(StatusItemTest, aWatcherWithoutAHostChangesNothing) {
    const NotifierDesktop desktop(false);
    ASSERT_TRUE(iconShows());
    EXPECT_TRUE(desktop.items.isEmpty());
}

TEST_F(StatusItemTest, theHostFindsAnItemWithoutAMenu) {
    NotifierDesktop desktop;
    ASSERT_TRUE(waitUntil([&desktop] { return desktop.items.size() == 1; }));
    EXPECT_EQ(desktop.property(QStringLiteral("Category")).toString(), QStringLiteral("ApplicationStatus"));
    EXPECT_EQ(desktop.property(QStringLiteral("Id")).toString(), QStringLiteral("marrowfin"));
    EXPECT_EQ(desktop.property(QStringLiteral("Title")).toString(), QStringLiteral("Marrowfin"));
    EXPECT_EQ(desktop.property(QStringLiteral("Status")).toString(), QStringLiteral("Active"));
    EXPECT_EQ(desktop.property(QStringLiteral("ItemIsMenu")), QVariant(false));
    EXPECT_FALSE(desktop.property(QStringLiteral("Menu")).isValid());

    const auto pixmaps = qdbus_cast<freedesktop::NotifierPixmaps>(
        desktop.property(QStringLiteral("IconPixmap")).value<QDBusArgument>());
    std::vector<int> sides;
    for (const freedesktop::NotifierPixmap& pixmap : pixmaps) {
        EXPECT_EQ(pixmap.height, pixmap.width);
        EXPECT_EQ(pixmap.image().pixelColor(pixmap.width / 2, pixmap.height / 2), iconColor);
        sides.push_back(pixmap.width);
    }
    EXPECT_EQ(sides, (std::vector{22, 24, 32, 48}));
    const auto toolTip = qdbus_cast<freedesktop::NotifierToolTip>(
        desktop.property(QStringLiteral("ToolTip")).value<QDBusArgument>());
    EXPECT_EQ(toolTip.title, QStringLiteral("Marrowfin"));
}

TEST_F(StatusItemTest, aHostsClicksActAndOpenTheMenuWhereItSays) {
    NotifierDesktop desktop;
    ASSERT_TRUE(waitUntil([&desktop] { return desktop.items.size() == 1; }));
    QMenu menu;
    menu.addAction(QStringLiteral("Row"));
    onClick = [&] { item->popUp(menu); };
    EXPECT_TRUE(desktop.click(QStringLiteral("Activate"), 400, 300));
    ASSERT_TRUE(waitUntil([&menu] { return menu.isVisible(); }));
    EXPECT_EQ(menu.pos() * ratio(), QPoint(400, 300));
    menu.close();
    EXPECT_TRUE(desktop.click(QStringLiteral("ContextMenu"), 0, 0));
    ASSERT_TRUE(waitUntil([&menu] { return menu.isVisible(); }));
    menu.close();
    EXPECT_EQ(clicks, (std::vector{StatusItemButton::Left, StatusItemButton::Right}));
}

// Another watcher took over: what had registered with the first is unknown to it.
TEST_F(StatusItemTest, registersWithAWatcherThatReplacesAnother) {
    {
        NotifierDesktop first;
        ASSERT_TRUE(waitUntil([&first] { return first.items.size() == 1; }));
    }
    NotifierDesktop second;
    EXPECT_TRUE(waitUntil([&second] { return second.items.size() == 1; }));
}
