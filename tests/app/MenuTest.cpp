#include "AppFixture.h"

#include "app/CaptureMenu.h"
#include "app/StatusBarController.h"
#include "capture/CountdownDigit.h"
#include "capture/ScreenCaptureManager.h"
#include "capture/SelectionView.h"
#include "editor/EditorWindowController.h"
#include "support/CapturedOutput.h"
#include "support/Input.h"

#include <QDialog>
#include <QMenu>

using namespace marrowfin;
using namespace marrowfin::platform;
using namespace marrowfin::testsupport;
using marrowfin::fake::waitUntil;

namespace {

class PlayedRecorder : public RecorderFeature {
public:
    RecorderState now = RecorderState::idle;
    RecorderState state() const override { return now; }
    QString formattedDuration() const override { return QStringLiteral("01:23"); }
    QCoro::Task<> toggle() override { co_return; }
};

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

QAction* row(const QMenu& menu, const char* title) {
    for (QAction* action : menu.actions())
        if (action->text().section(u'\t', 0, 0) == QLatin1String(title))
            return action;
    ADD_FAILURE() << "no row " << title;
    return nullptr;
}

class MenuTest : public AppFixture {
protected:
    PlayedRecorder recorder;
    std::unique_ptr<QMenu> mainMenu() { return makeMainMenu({}, &recorder); }
    QMenu& opened() {
        desktop.statusBar.item->action(StatusItemButton::Left);
        return *desktop.statusBar.item->shownMenu;
    }
    void choose(const char* title) {
        QMenu& menu = opened();
        QAction* action = row(menu, title);
        menu.hide();
        action->trigger();
    }
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

TEST_F(MenuTest, everyCommandRowButTheHeadersHasASymbol) {
    const auto menu = mainMenu();
    for (const QAction* action : menu->actions())
        EXPECT_TRUE(action->isSeparator() || !action->isEnabled() || !action->icon().isNull())
            << action->text().toStdString();
}

TEST_F(MenuTest, theTimersSubmenuHasThreeRowsWithTheirSeconds) {
    const auto menu = mainMenu();
    const QMenu* submenu = row(*menu, "Self-Timer")->menu();
    EXPECT_EQ(rows(*submenu), QStringList({QStringLiteral("3 seconds"), QStringLiteral("5 seconds"),
                                           QStringLiteral("10 seconds")}));
    EXPECT_EQ(submenu->actions().at(2)->data().toInt(), 10);
    EXPECT_TRUE(submenu->actions().at(0)->icon().isNull());
}

TEST_F(MenuTest, theRecordingRowFollowsTheStateAtTheMomentOfOpening) {
    recorder.now = RecorderState::recording;
    const auto menu = mainMenu();
    EXPECT_NE(row(*menu, "Stop Recording (01:23)"), nullptr);
    recorder.now = RecorderState::stopping;
    EXPECT_NE(row(*mainMenu(), "Record Screen"), nullptr);
    EXPECT_NE(row(*menu, "Stop Recording (01:23)"), nullptr) << "fixed while it is open";
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
    EXPECT_EQ(rows(*makeAllInOneMenu({}, &recorder)), expected);
    recorder.now = RecorderState::recording;
    expected.last() = QStringLiteral("Stop Recording");
    EXPECT_EQ(rows(*makeAllInOneMenu({}, &recorder)), expected) << "no elapsed time here";
    EXPECT_EQ(rows(*makeAllInOneMenu({}, nullptr)).last(), QStringLiteral("Record Screen"));
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

TEST_F(MenuTest, aCommandEndsAtTheAlertWithoutPermission) {
    desktop.addScreen(1, {0, 0, 800, 600});
    desktop.screenSource.contentError = Error{Error::Kind::Unavailable, QStringLiteral("not permitted")};
    launch();
    choose("Capture Fullscreen");
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QDialog>() != nullptr; }));
    onlyTopLevel<QDialog>()->reject();
    ASSERT_TRUE(waitUntil([] { return onlyTopLevel<QDialog>() == nullptr; }));
    EXPECT_FALSE(delegate.captureManager()->capturedImage().has_value());
}

TEST_F(MenuTest, captureFullscreenCaptures) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    choose("Capture Fullscreen");
    EXPECT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
}

TEST_F(MenuTest, theSelfTimerCountsAndThenLetsTheUserDrawTheArea) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    QMenu& menu = opened();
    QAction* three = row(menu, "Self-Timer")->menu()->actions().first();
    menu.hide();
    three->trigger();
    ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<CountdownDigit>() != nullptr; }));
    EXPECT_EQ(onlyChildOfTopLevels<SelectionView>(), nullptr);
    ASSERT_TRUE(waitUntil([] { return onlyChildOfTopLevels<SelectionView>() != nullptr; }));
    dragMouse(*onlyChildOfTopLevels<SelectionView>(), {10, 10}, {100, 100});
    EXPECT_TRUE(waitUntil([&] { return delegate.captureManager()->capturedImage().has_value(); }));
}

TEST_F(MenuTest, theClipboardRowsAreSilentWithoutAnImage) {
    launch();
    CapturedOutput output;
    choose("Open from Clipboard");
    choose("Pin to Screen");
    QApplication::processEvents();
    EXPECT_EQ(output.text(), QString());
}

TEST_F(MenuTest, pinToScreenPinsTheClipboardsImage) {
    desktop.addScreen(1, {0, 0, 800, 600});
    launch();
    desktop.pasteboard.image = picture();
    const std::size_t before = desktop.surfaceHost.surfaces.size();
    choose("Pin to Screen");
    ASSERT_TRUE(waitUntil([&] { return desktop.surfaceHost.surfaces.size() == before + 1; }));
    EXPECT_EQ(desktop.surfaceHost.surfaces.back()->traits.level, SurfaceLevel::Pin);
}

TEST_F(MenuTest, openFromClipboardOpensTheImageInAnEditorInFront) {
    launch();
    desktop.pasteboard.image = picture();
    CapturedOutput output;
    choose("Open from Clipboard");
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    const EditorWindowController& editor = *EditorWindowController::openEditors().front();
    EXPECT_EQ(editor.image(), *desktop.pasteboard.image);
    EXPECT_TRUE(editor.window()->isVisible());
    EXPECT_TRUE(waitUntil([&] { return editor.window()->isActiveWindow(); }));
    EXPECT_EQ(output.text(), QString());
}

TEST_F(MenuTest, anEditorFromTheClipboardStaysReferencedWhenItsWindowHasClosed) {
    launch();
    desktop.pasteboard.image = picture();
    choose("Open from Clipboard");
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    const std::weak_ptr<EditorWindowController> editor = EditorWindowController::openEditors().front();
    editor.lock()->window()->close();
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().empty(); }));
    ASSERT_FALSE(editor.expired());
    EXPECT_EQ(editor.lock()->window(), nullptr) << "only the image is kept, not a window's memory";
    choose("Open from Clipboard");
    ASSERT_TRUE(waitUntil([] { return EditorWindowController::openEditors().size() == 1; }));
    EXPECT_NE(EditorWindowController::openEditors().front(), editor.lock());
}

TEST_F(MenuTest, whatIsNotBuiltYetSaysSoInOneLine) {
    launch();
    const std::pair<const char*, const char*> lines[] = {
        {"Scrolling Capture", "Scrolling capture isn't built yet.\n"},
        {"Capture Text (OCR)", "Text capture isn't built yet.\n"},
        {"Record Screen", "Screen recording isn't built yet.\n"},
        {"Capture History...", "The capture history window isn't built yet.\n"},
        {"Settings...", "The settings window isn't built yet.\n"},
        {"Check for Updates...", "The update check isn't built yet.\n"},
    };
    for (const auto& [title, line] : lines) {
        CapturedOutput output;
        choose(title);
        QApplication::processEvents();
        EXPECT_EQ(output.text(), QLatin1String(line));
    }
}
