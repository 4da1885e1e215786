#include "capture/AreaSelectionOverlay.h"

#include "base/SystemFonts.h"
#include "capture/SelectionView.h"
#include "platform/fake/FakeDesktop.h"
#include "support/Input.h"

#include <QFontMetricsF>
#include <QPainter>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace capture;
using namespace marrowfin::testsupport;
using marrowfin::fake::FakeDesktop;
using marrowfin::fake::waitUntil;

namespace {

using Selected = std::optional<DesktopRect>;

class PaintCounter : public QObject {
public:
    int paints = 0;

private:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

class AreaSelectionOverlayTest : public testing::Test {
protected:
    FakeDesktop desktop;
    AreaSelectionOverlay overlay;
    FlowScope flows;
    QObject listening; // ends with the test
    std::optional<Selected> result;
    int results = 0;

    void begin(const QRectF& screen = {0, 0, 800, 600}) {
        desktop.addScreen(1, screen);
        flows.start(overlay.selectArea()).then(&listening, [this](const Result<Selected>& rect) {
            ++results;
            result = rect.value();
        });
    }
    SelectionView& view() { return *onlyChildOfTopLevels<SelectionView>(); }
    Selected selected() {
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }));
        return result.value_or(std::nullopt);
    }
    QImage grab() { return view().grab().toImage().convertToFormat(QImage::Format_ARGB32); }
};

} // namespace

TEST_F(AreaSelectionOverlayTest, aDragInAnyDirectionGivesTheSameRectangle) {
    const QPointF corners[4][2] = {{{100, 100}, {300, 200}},
                                   {{300, 200}, {100, 100}},
                                   {{300, 100}, {100, 200}},
                                   {{100, 200}, {300, 100}}};
    for (const auto& drag : corners) {
        FakeDesktop* const fresh = &desktop;
        if (fresh->screens.shown.empty())
            desktop.addScreen(1, {0, 0, 800, 600});
        AreaSelectionOverlay each;
        std::optional<Selected> got;
        flows.start(each.selectArea()).then([&](const Result<Selected>& rect) { got = rect.value(); });
        dragMouse(view(), drag[0], drag[1]);
        ASSERT_TRUE(waitUntil([&] { return got.has_value(); }));
        each.cancel();
        ASSERT_TRUE(got->has_value());
        EXPECT_EQ((*got)->rect, QRectF(100, 400, 200, 100));
        ASSERT_TRUE(waitUntil([&] { return childrenOfTopLevels<SelectionView>().isEmpty(); }));
    }
}

TEST_F(AreaSelectionOverlayTest, fivePointsInOneDirectionIsACancel) {
    begin();
    dragMouse(view(), {100, 100}, {105, 200});
    EXPECT_FALSE(selected().has_value());
}

TEST_F(AreaSelectionOverlayTest, fiveAndAHalfPointsIsASelection) {
    begin();
    dragMouse(view(), {100, 100}, {105.5, 105.5});
    ASSERT_TRUE(selected().has_value());
    EXPECT_EQ(selected()->rect.size(), QSizeF(5.5, 5.5));
}

TEST_F(AreaSelectionOverlayTest, aPlainClickIsACancel) {
    begin();
    clickMouse(view(), {100, 100});
    EXPECT_FALSE(selected().has_value());
    EXPECT_EQ(results, 1);
}

TEST_F(AreaSelectionOverlayTest, escapeDuringADragEndsItAndTheLaterReleaseDoesNothing) {
    begin();
    pressMouse(view(), {100, 100});
    moveMouse(view(), {300, 300});
    pressKey(view(), Qt::Key_Escape);
    EXPECT_FALSE(selected().has_value());
    releaseMouse(view(), {300, 300});
    QApplication::processEvents();
    EXPECT_EQ(results, 1);
    EXPECT_FALSE(result->has_value());
}

TEST_F(AreaSelectionOverlayTest, theFocusPaintsNothingOfTheScreenAgain) {
    begin();
    ASSERT_TRUE(waitUntil([&] { return !childrenOfTopLevels<SelectionView>().isEmpty(); }));
    QApplication::processEvents();
    PaintCounter counter;
    view().installEventFilter(&counter);
    QFocusEvent comes(QEvent::FocusIn);
    QFocusEvent goes(QEvent::FocusOut);
    for (QEvent* event : {static_cast<QEvent*>(&comes), static_cast<QEvent*>(&goes)})
        QApplication::sendEvent(&view(), event);
    QApplication::processEvents();
    EXPECT_EQ(counter.paints, 0);
    view().update();
    QApplication::processEvents();
    EXPECT_EQ(counter.paints, 1);
}

TEST_F(AreaSelectionOverlayTest, otherKeysAndOtherButtonsDoNothing) {
    begin();
    pressKey(view(), Qt::Key_Return);
    clickMouse(view(), {100, 100}, Qt::RightButton);
    QApplication::processEvents();
    EXPECT_FALSE(result.has_value());
}

TEST_F(AreaSelectionOverlayTest, theRectangleIsInScreenCoordinatesOfAScreenWhoseOriginIsNotZero) {
    begin({-1280, 200, 800, 600});
    dragMouse(view(), {10, 20}, {110, 70});
    ASSERT_TRUE(selected().has_value());
    EXPECT_EQ(selected()->rect, QRectF(-1280 + 10, 200 + 600 - 70, 100, 50));
}

TEST_F(AreaSelectionOverlayTest, aDragIsClampedToItsScreen) {
    begin();
    dragMouse(view(), {700, 500}, {5000, 5000});
    ASSERT_TRUE(selected().has_value());
    EXPECT_EQ(selected()->rect, QRectF(700, 0, 100, 100));
}

TEST_F(AreaSelectionOverlayTest, withoutAMainScreenTheResultIsEmptyAndNoWindowComesUp) {
    flows.start(overlay.selectArea()).then(&listening, [this](const Result<Selected>& rect) {
        result = rect.value();
    });
    EXPECT_FALSE(selected().has_value());
    EXPECT_EQ(desktop.surfaceHost.hostedCount, 0);
}

TEST_F(AreaSelectionOverlayTest, theOverlayCoversTheScreenAboveAllAndHasTheKeyboard) {
    begin({0, 0, 640, 480});
    const fake::FakeSurface& surface = *desktop.surfaceHost.surfaces.front();
    EXPECT_EQ(surface.frame().rect, QRectF(0, 0, 640, 480));
    EXPECT_EQ(surface.traits.level, platform::SurfaceLevel::Overlay);
    EXPECT_EQ(surface.traits.keyboard, platform::SurfaceKeyboard::Exclusive);
    EXPECT_FALSE(surface.traits.passesClicks);
    EXPECT_EQ(view().cursor().shape(), Qt::CrossCursor);
}

TEST_F(AreaSelectionOverlayTest, theWindowStaysUpUntilTheCallerCancels) {
    begin();
    clickMouse(view(), {100, 100});
    selected();
    EXPECT_TRUE(desktop.surfaceHost.surfaces.front()->isVisible());
    EXPECT_EQ(view().cursor().shape(), Qt::ArrowCursor);
    overlay.cancel();
    EXPECT_TRUE(desktop.surfaceHost.surfaces.front()->retired);
}

TEST_F(AreaSelectionOverlayTest, aScreenThatGoesWhileSelectingIsACancel) {
    begin();
    desktop.surfaceHost.surfaces.front()->takeAway();
    EXPECT_FALSE(selected().has_value());
}

TEST_F(AreaSelectionOverlayTest, theWindowPaintsItsLayerBeneathTheViews) {
    begin();
    // Two layers: 1 - (1 - 0.3) * (1 - 0.5) = 0.65 of black, also inside the selection.
    pressMouse(view(), {100, 100});
    moveMouse(view(), {300, 300});
    const QImage shot = view().window()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    QImage whole(shot.size(), QImage::Format_ARGB32_Premultiplied);
    whole.fill(Qt::transparent);
    view().window()->render(&whole, QPoint(), QRegion(), QWidget::DrawChildren);
    EXPECT_NEAR(qAlpha(whole.pixel(20, 20)), 166, 1);
    EXPECT_NEAR(qAlpha(whole.pixel(200, 200)), 166, 1) << "no hole is cut";
}

TEST_F(AreaSelectionOverlayTest, theBorderIsWhiteDashesOfFourOnAndFourOff) {
    begin();
    pressMouse(view(), {100, 100});
    moveMouse(view(), {300, 300});
    const QImage shot = grab();
    int white = 0;
    int dark = 0;
    for (int x = 110; x < 290; ++x)
        (qRed(shot.pixel(x, 100)) > 200 ? white : dark) += 1;
    EXPECT_NEAR(white, 90, 4);
    EXPECT_NEAR(dark, 90, 4);
}

TEST_F(AreaSelectionOverlayTest, theDashesBeginAtTheBottomLeftAndRunAlongTheBottom) {
    begin();
    pressMouse(view(), {100, 100});
    moveMouse(view(), {303, 301});
    const QImage shot = grab();
    const auto isWhite = [&shot](int x, int y) { return qRed(shot.pixel(x, y)) > 200; };
    EXPECT_TRUE(isWhite(102, 300));
    EXPECT_FALSE(isWhite(106, 300));
    // 203 points on is the corner, in the fourth point of a dash.
    EXPECT_TRUE(isWhite(301, 300));
    EXPECT_FALSE(isWhite(302, 297));
    EXPECT_TRUE(isWhite(302, 293));
}

TEST_F(AreaSelectionOverlayTest, theLabelTellsTheWholePointsOfWidthAndHeight) {
    begin();
    pressMouse(view(), {100, 100});
    moveMouse(view(), {300.9, 160.9});
    QImage shot(view().size(), QImage::Format_ARGB32_Premultiplied);
    shot.fill(Qt::transparent);
    view().render(&shot, QPoint(), QRegion(), QWidget::DrawChildren);

    const QFont font = monospacedDigitSystemFont(12, QFont::Medium);
    const QString text = QStringLiteral("200 × 60");
    const double width = QFontMetricsF(font).horizontalAdvance(text);
    const double height = QFontMetricsF(font).height();
    const QRectF label(100 + 200.9 / 2 - width / 2, 100 - 4 - (height + 4), width + 8, height + 4);
    QImage expected(view().size(), QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::transparent);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(expected.rect(), QColor::fromRgbF(0, 0, 0, 0.5f));
    painter.fillRect(label, QColor::fromRgbF(0, 0, 0, 0.7f));
    painter.fillRect(label.adjusted(4, 2, -4, -2), QColor::fromRgbF(0, 0, 0, 0.7f));
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(label.topLeft() + QPointF(4, 2 + QFontMetricsF(font).ascent()), text);
    painter.end();
    const QRect around = label.toAlignedRect().adjusted(-10, -10, 10, 0);
    EXPECT_EQ(shot.copy(around), expected.copy(around));
}

TEST_F(AreaSelectionOverlayTest, theLabelStandsAboveTheSelectionAndIsNotMovedBackFromTheEdge) {
    begin();
    const auto labelPixels = [this](const QRect& area) {
        const QImage shot = grab();
        int bright = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                bright += shot.rect().contains(x, y) && qRed(shot.pixel(x, y)) > 180 ? 1 : 0;
        return bright;
    };
    pressMouse(view(), {100, 100});
    moveMouse(view(), {300, 300});
    EXPECT_GT(labelPixels({150, 78, 100, 17}), 20) << "the size, above";
    // At the top edge it is off the screen, and nothing stands below the edge in its place.
    releaseMouse(view(), {300, 300});
    pressMouse(view(), {100, 0});
    moveMouse(view(), {300, 200});
    EXPECT_EQ(labelPixels({110, 3, 180, 60}), 0);
}
