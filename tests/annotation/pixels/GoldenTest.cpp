// The looks of the ink: every record at density 1 and 2, on light and on dark content, crossing the picture's
// edge; the blends; text of many scripts; a document of all nine.
#include "../Canvas.h"

#include "annotation/AnnotationDocument.h"
#include "annotation/HighlightDarkness.h"
#include "annotation/ImageCompositor.h"
#include "annotation/SelectionChrome.h"
#include "support/Golden.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;
using namespace marrowfin::test;

namespace {

const QColor yellow(255, 204, 0);

struct Subject {
    const char* name;
    AnyAnnotation record; // on a picture of 120 by 80, the left half of it light and the right half dark
};

QList<QPointF> wave(QPointF from, int count) {
    QList<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.append(from +
                      QPointF(i * 1.3 + (i % 3 - 1) * 0.8, 14 * std::sin(i / 7.0) + (i % 4 - 1.5) * 0.9));
    return points;
}

AnyAnnotation marker(double x, double y, double width, double height) {
    auto record = box<HighlightAnnotation>(x, y, width, height);
    record.strokeColor = yellow;
    return record;
}

QList<Subject> subjects() {
    return {{"rectangle", box<RectangleAnnotation>(20, 16, 80, 44)},
            {"ellipse", box<EllipseAnnotation>(20, 16, 80, 44)},
            {"arrow", segment<ArrowAnnotation>({16, 62}, {100, 20}, 4)},
            {"line", segment<LineAnnotation>({16, 62}, {100, 20}, 4)},
            {"freehand", pen(wave({16, 40}, 68), 4)},
            {"text", text({14, 48}, QStringLiteral("Quick fox"), 20)},
            {"blur", box<BlurAnnotation>(20, 16, 80, 44)},
            {"highlight", marker(20, 16, 80, 44)},
            {"number", badge({60, 40}, 8)}};
}

// Lines of writing on a light and a dark page side by side.
QImage page(QSize points, int density) {
    QImage picture = canvas(points, density, QColor(250, 250, 248));
    QPainter painter(&picture);
    painter.scale(density, density);
    const int middle = points.width() / 2;
    painter.fillRect(middle, 0, middle, points.height(), QColor(30, 31, 36));
    for (int y = 6; y < points.height(); y += 10)
        for (int x = 5; x < points.width() - 8; x += 12)
            painter.fillRect(x, y, 8 - (x + y) % 3, 3,
                             x < middle ? QColor(60, 60, 70) : QColor(200, 205, 215));
    return picture;
}

QImage flattened(const QList<AnyAnnotation>& ink, QSize points, int density) {
    AnnotationDocument document(Image::withSize(page(points, density), points));
    for (AnyAnnotation one : ink) {
        if (auto* highlight = one.as<HighlightAnnotation>())
            highlight->backdropIsDark =
                isDarkBackdrop(document.baseImage(), highlight->box()).value_or(false);
        document.add(one);
    }
    return ImageCompositor::composite(document).pixels();
}

void expectGolden(const QString& name, const QImage& picture, GoldenTolerance tolerance = exactly) {
    EXPECT_TRUE(matchesGolden(MARROWFIN_TEST_SOURCE_DIR, name, picture, tolerance));
}

GoldenTolerance toleranceOf(const AnyAnnotation& record) {
    return record.as<BlurAnnotation>() ? rounding : exactly;
}

} // namespace

TEST(Golden, everyRecordOnLightAndDark) {
    for (const int density : {1, 2})
        for (const Subject& subject : subjects())
            expectGolden(QStringLiteral("%1-%2x").arg(QLatin1String(subject.name)).arg(density),
                         flattened({subject.record}, {120, 80}, density), toleranceOf(subject.record));
}

TEST(Golden, everyRecordAcrossThePicturesEdge) {
    for (const Subject& subject : subjects()) {
        AnyAnnotation low = subject.record;
        low.translate(45, 32);
        AnyAnnotation high = subject.record;
        high.translate(-45, -32);
        expectGolden(QStringLiteral("%1-edge").arg(QLatin1String(subject.name)),
                     flattened({high, low}, {120, 80}, 2), toleranceOf(subject.record));
    }
}

TEST(Golden, theTwoBlends) {
    expectGolden(
        QStringLiteral("blends"),
        flattened({marker(8, 8, 60, 26), marker(90, 8, 62, 26), marker(8, 44, 144, 26)}, {160, 80}, 2));
}

TEST(Golden, textOfManyScripts) {
    const QString words =
        QString::fromUtf8("Ångström déjà\n漢字かな交じり 한글\nשלום עולם مرحبا\nparty 🎉😀 time");
    for (const int density : {1, 2})
        expectGolden(QStringLiteral("scripts-%1x").arg(density),
                     painted({text({12, 32}, words, 22)}, {220, 130}, density));
}

TEST(Golden, textOfFractionalSizes) {
    QList<AnyAnnotation> lines;
    double y = 16;
    for (const double size : {9.5, 11.5, 19.2, 24.0, 36.0}) {
        lines.append(text({10, y}, QStringLiteral("Size %1").arg(size), size));
        y += size * 1.4;
    }
    expectGolden(QStringLiteral("sizes"), painted(lines, {160, 130}, 1));
}

TEST(Golden, badgesOfOneToThreeDigits) {
    expectGolden(QStringLiteral("badges"),
                 painted({badge({24, 24}, 1), badge({64, 24}, 10), badge({104, 24}, 128)}, {128, 48}, 2));
}

TEST(Golden, arrowsOfManyWidthsAndLengths) {
    QList<AnyAnnotation> arrows;
    for (int i = 0; i < 5; ++i) {
        const double width = 1 + 2.0 * i;
        arrows.append(segment<ArrowAnnotation>({10, 14.0 + 26 * i}, {110, 10.0 + 26 * i}, width));
        arrows.append(
            segment<ArrowAnnotation>({130, 14.0 + 26 * i}, {130 + 12.0 * (i + 1), 20.0 + 26 * i}, width));
    }
    expectGolden(QStringLiteral("arrows"), painted(arrows, {210, 140}, 2));
}

TEST(Golden, aSelectedBoxAndASelectedText) {
    for (const double scale : {1.0, 0.5}) {
        QImage picture = canvas({200, 100});
        QPainter painter(&picture);
        painter.scale(scale, scale);
        AnyAnnotation shape = box<EllipseAnnotation>(20 / scale, 20 / scale, 70 / scale, 50 / scale);
        AnyAnnotation words = text({115 / scale, 50 / scale}, QStringLiteral("Text"), 28 / scale);
        for (const AnyAnnotation& one : {shape, words}) {
            one.draw(painter);
            drawSelectionChrome(one, scale, painter);
        }
        painter.end();
        expectGolden(
            QStringLiteral("selection-%1").arg(scale == 1.0 ? QLatin1String("full") : QLatin1String("half")),
            picture);
    }
}

TEST(Golden, aDocumentOfAllNine) {
    QList<AnyAnnotation> ink{box<BlurAnnotation>(20, 150, 100, 50),
                             marker(20, 20, 110, 22),
                             marker(190, 20, 110, 22),
                             box<RectangleAnnotation>(20, 60, 126, 66),
                             box<EllipseAnnotation>(190, 60, 100, 60),
                             segment<ArrowAnnotation>({60, 190}, {180, 130}, 5),
                             segment<LineAnnotation>({190, 200}, {300, 180}, 3),
                             pen(wave({200, 155}, 70), 3),
                             text({30, 96}, QStringLiteral("Look here,\nthen there"), 18),
                             badge({150, 40}, 1),
                             badge({160, 190}, 2)};
    for (const int density : {1, 2})
        expectGolden(QStringLiteral("document-%1x").arg(density), flattened(ink, {320, 220}, density),
                     rounding);
}
