// Where cards stand on the screens that a desktop really has: beside its panels, on each monitor, in its
// scale.
#include "desktop/panel/CardsTest.h"
#include "desktop/support/Waiting.h"

namespace marrowfin {

using namespace imaging;
using namespace panel;

namespace {
class CardPlaces : public CardsTest {
protected:
    using Screen = platform::Screen;

    std::vector<Screen> screens() { return platform::services().screens.screens(); }
    // The pointer comes to the middle of this screen.
    void pointAt(const Screen& screen) {
        const DesktopPoint middle{screen.frame.rect.center()};
        other.movePointer(onScreen(middle.point));
        EXPECT_TRUE(desk::waitFor(
            [&] { return testsupport::await(platform::services().screens.pointerLocation()) == middle; }));
    }
    // The desktop's own panel at the foot of this screen, as the server has it.
    QRect panelOf(const Screen& screen) {
        const x11::Connection& c = other.connection();
        const QRect area(onScreen(QPointF(screen.frame.rect.left(), screen.frame.rect.bottom())),
                         (screen.frame.rect.size() * scale()).toSize());
        for (const xcb_window_t window :
             c.property32(c.root(), c.atom(x11::Atom::NetClientList), XCB_ATOM_WINDOW)) {
            const auto kind = c.property32(window, c.atom(x11::Atom::NetWmWindowType), XCB_ATOM_ATOM);
            if (!kind.empty() && kind.front() == c.atom(x11::Atom::NetWmWindowTypeDock) &&
                area.contains(other.frameOf(window)))
                return other.frameOf(window);
        }
        ADD_FAILURE() << "no panel on " << qPrintable(screen.name);
        return {};
    }
    // The card's rectangle in pixels.
    static QRect cardOnScreen(const CapturePanel* panel) {
        return {onScreen(panel, 0, cardSize.height()), (cardSize * scale()).toSize()};
    }
    QRect windowOf(CapturePanel* panel) {
        return other.frameOf(static_cast<xcb_window_t>(panel->content().internalWinId()));
    }
    void expectRows(const Screen& screen, const std::vector<CapturePanel*>& oldestFirst) {
        const auto frames = stackFrames(screen.visibleFrame, static_cast<int>(oldestFirst.size()));
        for (std::size_t row = 0; row < frames.size(); ++row) {
            CapturePanel* panel = oldestFirst[oldestFirst.size() - 1 - row];
            EXPECT_TRUE(desk::waitFor([&] { return panel->frame() == frames[row]; })) << row;
            const QRect window(onScreen(QPointF(frames[row].rect.left(), frames[row].rect.bottom())),
                               (windowSize * scale()).toSize());
            EXPECT_TRUE(desk::waitFor([&] { return windowOf(panel) == window; })) << row;
            EXPECT_TRUE(desk::waitFor([&] { return other.pixel(onScreen(panel, 120, 90)) == captureColor; }));
        }
    }
};
} // namespace

TEST_F(CardPlaces, StandAboveThePanelInTheBottomLeftCornerOfThePointersScreen) {
    for (const Screen& screen : screens()) {
        pointAt(screen);
        CapturePanel* panel = present();
        const QRect bar = panelOf(screen);
        const QRect card = cardOnScreen(panel);
        EXPECT_EQ(card.left(), bar.left() + qRound(24 * scale()));
        EXPECT_EQ(card.bottom() + 1, bar.top() - qRound(24 * scale()));
        EXPECT_EQ(windowOf(panel),
                  QRect(card.left() - qRound(18 * scale()), card.top() - qRound(12 * scale()),
                        qRound(276 * scale()), qRound(194 * scale())));
        EXPECT_EQ(controller().entryFor(panel)->displayID, screen.displayID);
    }
}

TEST_F(CardPlaces, AFullColumnSendsItsOldestAwayAndLeavesTheOtherScreensAlone) {
    std::vector<CapturePanel*> before;
    for (const Screen& screen : screens()) {
        pointAt(screen);
        std::vector<CapturePanel*> column;
        for (int count = 0; count < roomOn(screen); ++count)
            column.push_back(present());
        expectRows(screen, column);
        const CapturePanel* oldest = column.front();
        column.erase(column.begin());
        column.push_back(present());
        EXPECT_EQ(controller().entryFor(oldest), nullptr);
        expectRows(screen, column);
        before.insert(before.end(), column.begin(), column.end());
        EXPECT_EQ(controller().panels(), before);
    }
}

TEST_F(CardPlaces, AreAsFineAsTheScreen) {
    pointAt(screens().front());
    // Stripes of one pixel that just fill the card's mount.
    QImage stripes((QSizeF(220, 140) * scale()).toSize(), QImage::Format_RGB32);
    stripes.fill(Qt::white);
    for (int x = 0; x < stripes.width(); x += 2)
        for (int y = 0; y < stripes.height(); ++y)
            stripes.setPixel(x, y, qRgb(0, 0, 0));
    controller().present(Image::captured(stripes), [](const Image&) {});
    const QPoint middle = onScreen(controller().panels().front(), 120, 80);
    EXPECT_TRUE(desk::waitFor([&] {
        const QImage screen = other.screen();
        const auto grey = [&](int x) { return qGray(screen.pixel(middle + QPoint(x, 0))); };
        return std::abs(grey(0) - grey(1)) > 90 && std::abs(grey(1) - grey(2)) > 90 &&
               std::abs(grey(0) - grey(2)) < 9;
    }));
}

} // namespace marrowfin
