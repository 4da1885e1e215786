// The two menus row by row.
#include "MenuFixture.h"

#include "app/CaptureMenu.h"
#include "chrome/Symbols.h"

#include <map>

using namespace marrowfin;
using namespace app;
using namespace commands;
using namespace marrowfin::platform;
using namespace marrowfin::testsupport;
using marrowfin::fake::waitUntil;

namespace {

// Titles as a person reads them: headers in brackets, separators as a dash, the key column behind a bar.
QStringList rows(const QMenu& menu) {
    QStringList titles;
    for (const QAction* action : menu.actions()) {
        QString text = action->text();
        if (action->isSeparator())
            text = QStringLiteral("-");
        else if (!action->isEnabled())
            text = u'[' + text + u']';
        else if (action->menu() != nullptr)
            text += QStringLiteral(" >");
        titles << text.replace(u'\t', u'|');
    }
    return titles;
}

// The symbols of the rows that have one, drawn as a menu draws them; by title.
void expectSymbols(const QMenu& menu, const std::map<QString, QString>& symbols) {
    const QColor color = menu.palette().color(QPalette::WindowText);
    const auto drawn = [](const QIcon& icon) { return icon.pixmap(32, 32).toImage(); };
    for (const QAction* action : menu.actions()) {
        if (action->isSeparator() || !action->isEnabled())
            continue;
        const QString title = action->text().section(u'\t', 0, 0);
        ASSERT_TRUE(symbols.contains(title)) << title.toStdString();
        EXPECT_EQ(drawn(action->icon()), drawn(chrome::symbolIcon(symbols.at(title), color)))
            << title.toStdString();
        EXPECT_TRUE(action->isIconVisibleInMenu()) << title.toStdString();
    }
}

class MenuTest : public MenuFixture {
protected:
    MenuTest() {
        table.provideState([this] { return ProgramState{recorder, QStringLiteral("01:23")}; });
    }
    std::unique_ptr<QMenu> mainMenu() { return makeMenu(Menu::Main, table); }
    std::unique_ptr<QMenu> allInOneMenu() { return makeMenu(Menu::AllInOne, table); }

    RecorderState recorder = RecorderState::idle;
    CommandTable table{{}};
};

} // namespace

TEST_F(MenuTest, theMainMenuRowByRow) {
    const QStringList expected = {
        QStringLiteral("[Capture]"),
        QStringLiteral("All-In-One|Super+Shift+S"),
        QStringLiteral("Capture Area|Super+Shift+4"),
        QStringLiteral("Capture Previous Area"),
        QStringLiteral("Capture Fullscreen|Super+Shift+3"),
        QStringLiteral("Capture Window|Super+Shift+5"),
        QStringLiteral("Scrolling Capture"),
        QStringLiteral("Self-Timer >"),
        QStringLiteral("-"),
        QStringLiteral("[Tools]"),
        QStringLiteral("Capture Text (OCR)"),
        QStringLiteral("Open from Clipboard|Super+V"),
        QStringLiteral("Pin to Screen"),
        QStringLiteral("-"),
        QStringLiteral("[Recording]"),
        QStringLiteral("Record Screen"),
        QStringLiteral("-"),
        QStringLiteral("Capture History..."),
        QStringLiteral("Settings...|Super+,"),
        QStringLiteral("Check for Updates..."),
        QStringLiteral("-"),
        QStringLiteral("Quit Marrowfin|Super+Q"),
    };
    EXPECT_EQ(rows(*mainMenu()), expected);
    EXPECT_EQ(mainMenu()->title(), QStringLiteral("Marrowfin"));
}

TEST_F(MenuTest, keyColumnsAreLabelsNotShortcuts) {
    const auto menu = mainMenu();
    for (const QAction* action : menu->actions())
        EXPECT_TRUE(action->shortcut().isEmpty()) << action->text().toStdString();
}

TEST_F(MenuTest, eachCommandRowHasItsSymbol) {
    std::map<QString, QString> symbols = {
        {"All-In-One", "camera.viewfinder"},
        {"Capture Area", "rectangle.dashed"},
        {"Capture Previous Area", "rectangle.dashed.badge.record"},
        {"Capture Fullscreen", "desktopcomputer"},
        {"Capture Window", "macwindow"},
        {"Scrolling Capture", "scroll"},
        {"Self-Timer", "timer"},
        {"Capture Text (OCR)", "text.viewfinder"},
        {"Open from Clipboard", "doc.on.clipboard"},
        {"Pin to Screen", "pin"},
        {"Record Screen", "record.circle"},
        {"Capture History...", "clock.arrow.circlepath"},
        {"Settings...", "gear"},
        {"Check for Updates...", "arrow.down.circle"},
        {"Quit Marrowfin", "power"},
    };
    expectSymbols(*mainMenu(), symbols);
    recorder = RecorderState::recording;
    symbols["Stop Recording (01:23)"] = "stop.circle.fill";
    expectSymbols(*mainMenu(), symbols);
    symbols["Stop Recording"] = "record.circle"; // the small menu's doesn't change
    expectSymbols(*allInOneMenu(), symbols);
    recorder = RecorderState::idle;
    expectSymbols(*allInOneMenu(), symbols);
}

TEST_F(MenuTest, aSymbolIsDescribedByItsTitleAndTheTimersByOneOfItsOwn) {
    const auto menu = mainMenu();
    for (const QAction* action : menu->actions()) {
        if (action->isSeparator() || !action->isEnabled())
            continue;
        const QString title = action->text().section(u'\t', 0, 0);
        EXPECT_EQ(action->iconText(), title == u"Self-Timer" ? QStringLiteral("Timer") : title);
    }
}

TEST_F(MenuTest, aRowRunsItsCommand) {
    std::vector<CommandRequest> requests;
    table.provide(CommandID::openFromClipboard, [&](const CommandRequest& request) {
        requests.push_back(request);
        return settled<CommandResult>({});
    });
    row(*mainMenu(), QStringLiteral("Open from Clipboard"))->trigger();
    EXPECT_EQ(requests, std::vector{CommandRequest{}});
}

TEST_F(MenuTest, theTimersSubmenuHasThreeRowsWithTheirSeconds) {
    const auto menu = mainMenu();
    const QMenu* submenu = row(*menu, QStringLiteral("Self-Timer"))->menu();
    EXPECT_EQ(rows(*submenu), QStringList({QStringLiteral("3 seconds"), QStringLiteral("5 seconds"),
                                           QStringLiteral("10 seconds")}));
    EXPECT_EQ(submenu->actions().at(2)->data().toInt(), 10);
    EXPECT_TRUE(submenu->actions().at(0)->icon().isNull());
}

TEST_F(MenuTest, theRecordingRowFollowsTheStateAtTheMomentOfOpening) {
    recorder = RecorderState::recording;
    const auto menu = mainMenu();
    EXPECT_NE(row(*menu, QStringLiteral("Stop Recording (01:23)")), nullptr);
    recorder = RecorderState::stopping;
    EXPECT_NE(row(*mainMenu(), QStringLiteral("Record Screen")), nullptr);
    EXPECT_NE(row(*menu, QStringLiteral("Stop Recording (01:23)")), nullptr) << "fixed while it is open";
}

TEST_F(MenuTest, theAllInOneMenuRowByRow) {
    QStringList expected = {
        QStringLiteral("Capture Area"),
        QStringLiteral("Capture Window"),
        QStringLiteral("Capture Fullscreen"),
        QStringLiteral("-"),
        QStringLiteral("Scrolling Capture"),
        QStringLiteral("Capture Text (OCR)"),
        QStringLiteral("-"),
        QStringLiteral("Record Screen"),
    };
    EXPECT_EQ(rows(*allInOneMenu()), expected);
    recorder = RecorderState::recording;
    expected.last() = QStringLiteral("Stop Recording");
    EXPECT_EQ(rows(*allInOneMenu()), expected) << "no elapsed time here";
}

TEST_F(MenuTest, eachOpeningBuildsAFreshMenuThatLeavesNoTraceInAGrab) {
    launch();
    QMenu* first = &opened();
    const int adopted = desktop.surfaceHost.adoptedMenus;
    EXPECT_EQ(adopted, 2) << "the menu and its submenu";
    QMenu* second = &opened();
    EXPECT_NE(first, second);
    EXPECT_EQ(desktop.surfaceHost.adoptedMenus, 2 * adopted);
}

TEST_F(MenuTest, aMenuGoesWhenItHasClosed) {
    launch();
    const QPointer<QMenu> menu = &opened();
    menu->close();
    EXPECT_TRUE(waitUntil([&] { return menu.isNull(); }));
}
