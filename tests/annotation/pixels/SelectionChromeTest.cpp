// The frame and handles of a selection keep their size on the screen.
#include "../Canvas.h"

#include "annotation/SelectionChrome.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace annotation;
using namespace marrowfin::test;

namespace {

const QColor blue = systemColor(SystemColor::blue);

// The chrome as a canvas at this scale shows it.
QImage chrome(const AnyAnnotation& one, double scale, QSize viewPoints) {
    QImage picture = canvas(viewPoints);
    QPainter painter(&picture);
    painter.scale(scale, scale);
    drawSelectionChrome(one, scale, painter);
    return picture;
}

} // namespace

TEST(SelectionChrome, handlesAreEightPointsAtAnyFit) {
    for (const double scale : {1.0, 0.5}) {
        const AnyAnnotation record = box<RectangleAnnotation>(40 / scale, 40 / scale, 80 / scale, 60 / scale);
        const QImage picture = chrome(record, scale, {160, 140});
        // The top left handle spans 36 to 44; white inside, blue around.
        EXPECT_EQ(picture.pixelColor(40, 40), QColor(Qt::white));
        EXPECT_EQ(picture.pixelColor(38, 42), QColor(Qt::white));
        EXPECT_LT(picture.pixelColor(36, 40).red(), 140);
        EXPECT_EQ(picture.pixelColor(34, 40), QColor(Qt::white)) << "nothing further out";
        EXPECT_EQ(changedArea(canvas({160, 140}), picture), QRect(35, 35, 90, 70));
    }
}

TEST(SelectionChrome, theFrameIsDashedByFours) {
    const AnyAnnotation record = segment<LineAnnotation>({20, 20.75}, {120, 60.75});
    const QImage picture = chrome(record, 1, {140, 80});
    int dark = 0;
    for (int x = 24; x < 104; ++x)
        dark += picture.pixelColor(x, 20).red() < 60;
    EXPECT_NEAR(dark, 40, 3) << "half of the edge";
}

TEST(SelectionChrome, aTextGetsTheDashedBoxAlone) {
    const AnyAnnotation words = text({30, 60}, QStringLiteral("Selected"));
    const QImage picture = chrome(words, 1, {180, 100});
    const QRectF frame = words.boundingRect();
    EXPECT_TRUE(isUntouched(picture, frame.adjusted(2, 2, -2, -2).toRect()));
    EXPECT_TRUE(
        frame.adjusted(-1, -1, 1, 1).toAlignedRect().contains(changedArea(canvas({180, 100}), picture)));
}

TEST(SelectionChrome, takesTheAppearancesBlue) {
    const AnyAnnotation record = box<RectangleAnnotation>(20, 20, 40, 40);
    QImage picture = canvas({80, 80});
    QPainter painter(&picture);
    drawSelectionChrome(record, 1, painter, ColorScheme::Dark);
    painter.end();
    EXPECT_NE(picture, chrome(record, 1, {80, 80}));
}

TEST(SelectionChrome, isNotDrawnWithoutAScale) {
    const AnyAnnotation record = box<RectangleAnnotation>(20, 20, 40, 40);
    for (const double scale : {0.0, -1.0, std::nan("")}) {
        QImage picture = canvas({80, 80});
        QPainter painter(&picture);
        drawSelectionChrome(record, scale, painter);
        painter.end();
        EXPECT_EQ(picture, canvas({80, 80}));
    }
}
