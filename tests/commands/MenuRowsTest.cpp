// The two menus as values, row by row.
#include "commands/MenuRows.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace commands;

namespace {

// A row as one line: title | symbol (description) | key; headers in brackets, separators as a dash.
QString line(const MenuRow& row) {
    switch (row.kind) {
    case MenuRow::Kind::Header:
        return u'[' + row.title + u']';
    case MenuRow::Kind::Separator:
        return QStringLiteral("-");
    case MenuRow::Kind::Submenu:
    case MenuRow::Kind::Command:
        break;
    }
    QString text = QStringLiteral("%1 | %2 (%3)").arg(row.title, row.symbol, row.symbolDescription);
    if (!row.keyLabel.isEmpty())
        text += QStringLiteral(" | ") + row.keyLabel;
    return row.kind == MenuRow::Kind::Submenu ? text + QStringLiteral(" >") : text;
}

QStringList lines(const std::vector<MenuRow>& rows) {
    QStringList lines;
    for (const MenuRow& row : rows)
        lines << line(row);
    return lines;
}

class MenuRowsTest : public testing::Test {
protected:
    void record(RecorderState state) {
        table.provideState([state] { return ProgramState{state, QStringLiteral("01:23")}; });
    }
    MenuRow row(Menu menu, CommandID id) const {
        for (const MenuRow& row : menuRows(menu, table))
            if (row.command == id && row.kind != MenuRow::Kind::Header &&
                row.kind != MenuRow::Kind::Separator)
                return row;
        ADD_FAILURE() << "no such row";
        return {};
    }

    CommandTable table{{}};
};

} // namespace

TEST_F(MenuRowsTest, theMainMenu) {
    const QStringList expected = {
        "[Capture]",
        "All-In-One | camera.viewfinder (All-In-One) | Super+Shift+S",
        "Capture Area | rectangle.dashed (Capture Area) | Super+Shift+4",
        "Capture Previous Area | rectangle.dashed.badge.record (Capture Previous Area)",
        "Capture Fullscreen | desktopcomputer (Capture Fullscreen) | Super+Shift+3",
        "Capture Window | macwindow (Capture Window) | Super+Shift+5",
        "Scrolling Capture | scroll (Scrolling Capture)",
        "Self-Timer | timer (Timer) >",
        "-",
        "[Tools]",
        "Capture Text (OCR) | text.viewfinder (Capture Text (OCR))",
        "Open from Clipboard | doc.on.clipboard (Open from Clipboard) | Super+V",
        "Pin to Screen | pin (Pin to Screen)",
        "-",
        "[Recording]",
        "Record Screen | record.circle (Record Screen)",
        "-",
        "Capture History... | clock.arrow.circlepath (Capture History...)",
        "Settings... | gear (Settings...) | Super+,",
        "Check for Updates... | arrow.down.circle (Check for Updates...)",
        "-",
        "Quit Marrowfin | power (Quit Marrowfin) | Super+Q",
    };
    EXPECT_EQ(lines(menuRows(Menu::Main, table)), expected);
    EXPECT_EQ(menuTitle(Menu::Main), "Marrowfin");
}

TEST_F(MenuRowsTest, theAllInOneMenuHasNoKeys) {
    const QStringList expected = {
        "Capture Area | rectangle.dashed (Capture Area)",
        "Capture Window | macwindow (Capture Window)",
        "Capture Fullscreen | desktopcomputer (Capture Fullscreen)",
        "-",
        "Scrolling Capture | scroll (Scrolling Capture)",
        "Capture Text (OCR) | text.viewfinder (Capture Text (OCR))",
        "-",
        "Record Screen | record.circle (Record Screen)",
    };
    EXPECT_EQ(lines(menuRows(Menu::AllInOne, table)), expected);
    EXPECT_EQ(menuTitle(Menu::AllInOne), "");
}

TEST_F(MenuRowsTest, theSelfTimerOffersThreeDelaysWithoutASymbol) {
    const MenuRow timer = row(Menu::Main, CommandID::selfTimer);
    EXPECT_EQ(lines(timer.rows), QStringList({"3 seconds |  ()", "5 seconds |  ()", "10 seconds |  ()"}));
    std::vector<std::int64_t> delays;
    for (const MenuRow& choice : timer.rows) {
        EXPECT_EQ(choice.command, CommandID::selfTimer);
        delays.push_back(choice.request.delay.count());
    }
    EXPECT_EQ(delays, (std::vector<std::int64_t>{3, 5, 10}));
}

TEST_F(MenuRowsTest, theRecordingRowTellsTheTimeInTheMainMenuAlone) {
    record(RecorderState::recording);
    EXPECT_EQ(line(row(Menu::Main, CommandID::recordScreen)),
              "Stop Recording (01:23) | stop.circle.fill (Stop Recording (01:23))");
    EXPECT_EQ(line(row(Menu::AllInOne, CommandID::recordScreen)),
              "Stop Recording | record.circle (Stop Recording)");
}

TEST_F(MenuRowsTest, aRecorderThatIsStoppingReadsAsOneThatIsIdle) {
    record(RecorderState::stopping);
    for (const Menu menu : {Menu::Main, Menu::AllInOne})
        EXPECT_EQ(line(row(menu, CommandID::recordScreen)), "Record Screen | record.circle (Record Screen)");
}

TEST_F(MenuRowsTest, rowsThatWereMadeKeepTheirTitle) {
    record(RecorderState::recording);
    const std::vector<MenuRow> open = menuRows(Menu::AllInOne, table);
    record(RecorderState::idle);
    EXPECT_EQ(open.back().title, "Stop Recording");
}
