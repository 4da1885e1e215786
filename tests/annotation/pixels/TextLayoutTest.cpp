// One layout for measuring, painting and the caret.
#include "../Canvas.h"

#include "annotation/TextLayout.h"
#include "base/Geometry.h"

#include <gtest/gtest.h>

using namespace marrowfin;
using namespace annotation;
using namespace marrowfin::test;

namespace {

double widthOf(const QString& words, double size = 24) {
    return TextLayout(words, size).rect().width();
}

} // namespace

TEST(FontMetrics, aLineIsItsAscentItsDescentAndItsLeading) {
    const LineMetrics metrics = textLineMetrics(24);
    EXPECT_NEAR(metrics.height, 24 * (0.96875 + 0.24142), 0.02); // Inter's
    EXPECT_NEAR(metrics.baseline, 24 * 0.96875, 0.01);
    EXPECT_DOUBLE_EQ(defaultLineHeightForFont(textFont(24)), metrics.height);
    EXPECT_DOUBLE_EQ(defaultBaselineOffsetForFont(textFont(24)), metrics.baseline);
}

TEST(FontMetrics, sizesMayBeFractionalAndScaleExactly) {
    for (const double size : {11.5, 19.2, 23.7, 48.0}) {
        EXPECT_NEAR(textLineMetrics(size).height / size, textLineMetrics(24).height / 24, 1e-12);
        EXPECT_NEAR(widthOf(QStringLiteral("Fractional sizes"), size) / size,
                    widthOf(QStringLiteral("Fractional sizes"), 24) / 24, 1e-12);
    }
}

TEST(TextLayout, theBoxRisesAboveTheBaselineByTheFirstLinesOffset) {
    const auto record = text({100, 200}, QStringLiteral("Two\nlines"));
    const LineMetrics metrics = textLineMetrics(24);
    const QRectF box = record.boundingRect();
    EXPECT_DOUBLE_EQ(box.left(), 100);
    EXPECT_DOUBLE_EQ(box.top(), 200 - metrics.baseline);
    EXPECT_DOUBLE_EQ(box.height(), 2 * metrics.height);
    EXPECT_DOUBLE_EQ(box.width(), std::max(widthOf(QStringLiteral("Two")), widthOf(QStringLiteral("lines"))));
}

TEST(TextLayout, emptyLinesCount) {
    const double height = textLineMetrics(24).height;
    EXPECT_DOUBLE_EQ(TextLayout(QString(), 24).rect().height(), height);
    EXPECT_DOUBLE_EQ(TextLayout(QString(), 24).rect().width(), 0);
    EXPECT_DOUBLE_EQ(TextLayout(QStringLiteral("a\n\nb\n"), 24).rect().height(), 4 * height);
}

TEST(TextLayout, spacesAtTheEndHaveTheirWidth) {
    EXPECT_GT(widthOf(QStringLiteral("word  ")), widthOf(QStringLiteral("word")) + 5);
    EXPECT_GT(widthOf(QStringLiteral("   ")), 5);
}

TEST(TextLayout, aTextIsHitWithinItsBoxAndTheTolerance) {
    const auto record = text({100, 200}, QStringLiteral("Press\nhere"));
    const QRectF box = record.boundingRect();
    EXPECT_TRUE(record.hitTest(box.center(), 6));
    EXPECT_TRUE(record.hitTest(box.topLeft() - QPointF(5.9, 5.9), 6));
    EXPECT_FALSE(record.hitTest(box.topLeft() - QPointF(6.1, 0), 6));
    EXPECT_FALSE(record.hitTest(box.topLeft() - QPointF(0, 6.1), 6));
    EXPECT_TRUE(record.hitTest(box.bottomRight() + QPointF(5.9, 5.9), 6));
    EXPECT_FALSE(record.hitTest(box.bottomRight() + QPointF(0, 6), 6));
    EXPECT_FALSE(record.hitTest(box.bottomRight() + QPointF(6, 0), 6));
}

TEST(TextLayout, theCaretStandsBetweenTheGlyphsOfItsLine) {
    const TextLayout layout(QStringLiteral("ab\ncd"), 24);
    const LineMetrics metrics = layout.metrics();
    EXPECT_EQ(layout.caretRect(0), QRectF(0, -metrics.baseline, 0, metrics.height));
    EXPECT_NEAR(layout.caretRect(1).x(), widthOf(QStringLiteral("a")), 0.3);
    EXPECT_NEAR(layout.caretRect(2).x(), widthOf(QStringLiteral("ab")), 0.01);
    EXPECT_EQ(layout.caretRect(3), QRectF(0, metrics.height - metrics.baseline, 0, metrics.height));
    EXPECT_NEAR(layout.caretRect(5).x(), widthOf(QStringLiteral("cd")), 0.01);
    EXPECT_EQ(layout.caretRect(99), layout.caretRect(5));
    EXPECT_EQ(layout.caretRect(-3), layout.caretRect(0));
}

TEST(TextLayout, aPressFindsTheNearestPosition) {
    const TextLayout layout(QStringLiteral("Hello\n\nworld"), 24);
    for (int position = 0; position <= 12; ++position)
        EXPECT_EQ(layout.positionAt(layout.caretRect(position).center()), position);
    EXPECT_EQ(layout.positionAt({1e6, -1e6}), 5);
    EXPECT_EQ(layout.positionAt({1e6, 1e6}), 12);
    EXPECT_EQ(layout.positionAt({-50, 1e6}), 7);
}

TEST(TextLayout, theCaretStepsOverWholeCharacters) {
    const QString words =
        QString::fromUtf8("e\xCC\x81\n\xF0\x9F\x98\x80!"); // e with a mark; an emoji of two units
    const TextLayout layout(words, 24);
    QList<int> forwards{0};
    while (layout.positionAfter(forwards.last()) != forwards.last())
        forwards.append(layout.positionAfter(forwards.last()));
    EXPECT_EQ(forwards, (QList<int>{0, 2, 3, 5, 6}));
    QList<int> backwards{6};
    while (layout.positionBefore(backwards.last()) != backwards.last())
        backwards.append(layout.positionBefore(backwards.last()));
    EXPECT_EQ(backwards, (QList<int>{6, 5, 3, 2, 0}));
}

TEST(TextLayout, aSelectionCoversItsGlyphsOnEachLine) {
    const TextLayout layout(QStringLiteral("Hello\nworld"), 24);
    const QList<QRectF> rects = layout.rangeRects(2, 8);
    ASSERT_EQ(rects.size(), 2);
    EXPECT_NEAR(rects[0].left(), layout.caretRect(2).x(), 1e-9);
    EXPECT_NEAR(maxX(rects[0]), layout.caretRect(5).x(), 1e-9);
    EXPECT_NEAR(rects[1].left(), 0, 1e-9);
    EXPECT_NEAR(maxX(rects[1]), layout.caretRect(8).x(), 1e-9);
    EXPECT_TRUE(layout.rangeRects(3, 3).isEmpty());
}

TEST(TextLayout, aLineThatReadsFromTheRightStandsAtTheSamePlace) {
    const QString words = QString::fromUtf8("שלום");
    const TextLayout layout(words, 24);
    EXPECT_GT(layout.caretRect(0).x(), layout.caretRect(4).x()) << "reading starts at the right";
    EXPECT_NEAR(layout.caretRect(0).x(), layout.rect().width(), 0.01);
    const QImage picture = painted({text({20, 40}, words)}, {140, 60});
    const QRect ink = changedArea(canvas({140, 60}), picture);
    EXPECT_GE(ink.left(), 19);
    EXPECT_LE(ink.right(), 21 + static_cast<int>(layout.rect().width()));
}

TEST(TextLayout, aMixedSelectionIsInPiecesWhereTheDirectionChanges) {
    const TextLayout layout(QString::fromUtf8("abc שלום"), 24);
    EXPECT_EQ(layout.rangeRects(2, 6).size(), 2);
}

TEST(TextLayout, glyphsOfOtherFontsDontMoveTheBaseline) {
    const QImage alone = painted({text({20, 40}, QStringLiteral("Hx"))}, {200, 60});
    const QImage mixed = painted({text({20, 40}, QString::fromUtf8("Hx漢😀"))}, {200, 60});
    const int width = static_cast<int>(widthOf(QStringLiteral("Hx")));
    EXPECT_EQ(mixed.copy(20, 0, width, 60), alone.copy(20, 0, width, 60));
}

TEST(TextLayout, otherSeparatorsDontBreakALine) {
    const TextLayout layout(QString::fromUtf8("a\xE2\x80\xA8"
                                              "b\rc\xE2\x80\xA9"
                                              "d"),
                            24);
    EXPECT_EQ(layout.lineCount(), 1);
    EXPECT_NEAR(layout.rect().width(), widthOf(QStringLiteral("a b c d")), 0.01);
    EXPECT_NEAR(layout.caretRect(7).x(), layout.rect().width(), 0.01);
}

TEST(TextLayout, whatIsPaintedIsWhatIsMeasured) {
    // Letters fill their line's width but for the room around the outer ones.
    const auto record = text({20, 60}, QStringLiteral("Measured"), 40);
    const QRect ink = changedArea(canvas({260, 90}), painted({record}, {260, 90}));
    EXPECT_NEAR(ink.left(), record.boundingRect().left(), 5);
    EXPECT_NEAR(ink.right(), record.boundingRect().right(), 5);
}

TEST(TextLayout, theSizeDoesNotDependOnThePicturesResolution) {
    QImage coarse = canvas({200, 60});
    QImage fine = canvas({200, 60});
    coarse.setDotsPerMeterX(1000), coarse.setDotsPerMeterY(1000);
    fine.setDotsPerMeterX(20000), fine.setDotsPerMeterY(20000);
    paint(coarse, {text({10, 40}, QStringLiteral("Same"))});
    paint(fine, {text({10, 40}, QStringLiteral("Same"))});
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 200; ++x)
            ASSERT_EQ(coarse.pixel(x, y), fine.pixel(x, y));
}

TEST(TextLayout, sizesThatNoTextCanHaveAreRefused) {
    for (const double size : {0.0, -4.0, std::nan(""), 1e9, std::numeric_limits<double>::infinity()}) {
        const auto record = text({20, 30}, QStringLiteral("refused"), size);
        EXPECT_EQ(record.boundingRect(), QRectF(20, 30, 0, 0));
        EXPECT_EQ(painted({record}, {60, 60}), canvas({60, 60}));
        const TextLayout layout(QStringLiteral("refused"), size);
        EXPECT_EQ(layout.positionAt({5, 5}), 0);
        EXPECT_EQ(layout.caretRect(3), QRectF(0, 0, 0, 0));
        EXPECT_EQ(layout.positionAfter(7), 7);
    }
}
