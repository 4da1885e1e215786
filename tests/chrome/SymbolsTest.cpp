// The pictures of buttons and menu rows.
#include "chrome/Symbols.h"
#include "support/Golden.h"

#include <QDirIterator>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::chrome;

namespace {

// All that the program's menus, windows and cards name.
const QStringList catalogue{
    QStringLiteral("1.circle"),
    QStringLiteral("arrow.down.circle"),
    QStringLiteral("arrow.up.right"),
    QStringLiteral("arrow.uturn.backward"),
    QStringLiteral("arrow.uturn.forward"),
    QStringLiteral("camera.viewfinder"),
    QStringLiteral("checkmark"),
    QStringLiteral("circle"),
    QStringLiteral("clock.arrow.circlepath"),
    QStringLiteral("crop"),
    QStringLiteral("cursorarrow"),
    QStringLiteral("desktopcomputer"),
    QStringLiteral("doc.on.clipboard"),
    QStringLiteral("doc.on.doc"),
    QStringLiteral("drop"),
    QStringLiteral("gear"),
    QStringLiteral("highlighter"),
    QStringLiteral("line.diagonal"),
    QStringLiteral("macwindow"),
    QStringLiteral("paintpalette"),
    QStringLiteral("pencil.tip"),
    QStringLiteral("pin"),
    QStringLiteral("power"),
    QStringLiteral("record.circle"),
    QStringLiteral("rectangle"),
    QStringLiteral("rectangle.dashed"),
    QStringLiteral("rectangle.dashed.badge.record"),
    QStringLiteral("scribble"),
    QStringLiteral("scroll"),
    QStringLiteral("square.and.arrow.down"),
    QStringLiteral("stop.circle.fill"),
    QStringLiteral("text.viewfinder"),
    QStringLiteral("textformat"),
    QStringLiteral("timer"),
    QStringLiteral("xmark"),
    QStringLiteral("xmark.circle.fill"),
};

const QColor ink(32, 32, 32);

// String literals of the sources that look like the name of a symbol.
QStringList namesInSources() {
    QSet<QString> families;
    for (const QString& name : catalogue)
        if (name.contains(u'.'))
            families << name.section(u'.', 0, 0);
    const QRegularExpression dotted(QStringLiteral("\"([a-z0-9]+(?:\\.[a-z0-9]+)+)\""));
    const QRegularExpression asked(QStringLiteral("symbol(?:Icon|Image)\\(QStringLiteral\\(\"([^\"]+)\"\\)"));
    QStringList found;
    QDirIterator files(QStringLiteral(MARROWFIN_TESTS_DIR "/../src"),
                       {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (auto match = dotted.globalMatch(text); match.hasNext();)
            if (const QString name = match.next().captured(1); families.contains(name.section(u'.', 0, 0)))
                found << name;
        for (auto match = asked.globalMatch(text); match.hasNext();)
            found << match.next().captured(1);
    }
    return found;
}

// Sum of the alpha, in fully covered pixels.
double coverage(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            sum += image.pixelColor(x, y).alphaF();
    return sum;
}

QImage sheet(double ratio, const QColor& ground, const QColor& color) {
    constexpr int columns = 9;
    constexpr int cell = 30;
    constexpr double side = 20;
    const int rows = (static_cast<int>(catalogue.size()) + columns - 1) / columns;
    QImage image(QSize(columns * cell, rows * cell) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(ground);
    QPainter painter(&image);
    for (int i = 0; i < catalogue.size(); ++i)
        painter.drawImage(QPointF(i % columns * cell + 5, i / columns * cell + 5),
                          symbolImage(catalogue[i], side, color, ratio));
    return image;
}

} // namespace

TEST(Symbols, everyNameHasItsDrawing) {
    EXPECT_EQ(symbolNames().join(u' ').toStdString(), catalogue.join(u' ').toStdString());
    const QStringList used = namesInSources();
    EXPECT_GE(used.size(), 10);
    for (const QString& name : used)
        EXPECT_TRUE(catalogue.contains(name)) << name.toStdString();
}

TEST(Symbols, anUnknownNameIsABrokenInvariant) {
    EXPECT_DEATH(symbolImage(QStringLiteral("no.such.symbol"), 16, ink), "");
    EXPECT_DEATH(symbolIcon(QStringLiteral("no.such.symbol"), ink), "");
}

TEST(Symbols, eachFillsItsSquareWithoutTouchingItsEdge) {
    for (const QString& name : catalogue) {
        const QImage image = symbolImage(name, 24, ink);
        const double share = coverage(image) / (24 * 24);
        EXPECT_GT(share, 0.03) << name.toStdString();
        EXPECT_LT(share, 0.70) << name.toStdString();
        for (int i = 0; i < 24; ++i)
            for (const QPoint edge : {QPoint(i, 0), QPoint(i, 23), QPoint(0, i), QPoint(23, i)})
                EXPECT_EQ(image.pixelColor(edge).alpha(), 0) << name.toStdString();
    }
}

TEST(Symbols, aHeavierWeightHasMoreInk) {
    for (const QString& name : catalogue) {
        const double regular = coverage(symbolImage(name, 32, ink, 1, SymbolWeight::Regular));
        const double medium = coverage(symbolImage(name, 32, ink, 1, SymbolWeight::Medium));
        const double semibold = coverage(symbolImage(name, 32, ink, 1, SymbolWeight::Semibold));
        // Shapes that are filled from edge to edge have no stroke to change.
        if (name.endsWith(QLatin1String(".fill")))
            continue;
        EXPECT_GT(medium, regular) << name.toStdString();
        EXPECT_GT(semibold, medium) << name.toStdString();
    }
}

// Where lines cross, a see-through colour is no darker than elsewhere.
TEST(Symbols, theColourIsTheOneGiven) {
    const QColor color(200, 30, 60, 120);
    const QImage image = symbolImage(QStringLiteral("crop"), 48, color);
    int strongest = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            strongest = std::max(strongest, image.pixelColor(x, y).alpha());
    EXPECT_EQ(strongest, 120);
    const QImage solid = symbolImage(QStringLiteral("stop.circle.fill"), 48, QColor(200, 30, 60));
    EXPECT_EQ(solid.pixelColor(24, 6), QColor(200, 30, 60));
}

TEST(Symbols, anIconIsDrawnForTheDensityItIsShownAt) {
    const QIcon icon = symbolIcon(QStringLiteral("gear"), ink);
    EXPECT_EQ(icon.pixmap(QSize(16, 16), 2).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
              symbolImage(QStringLiteral("gear"), 16, ink, 2));
    const double enabled = coverage(icon.pixmap(QSize(16, 16), 1).toImage());
    EXPECT_LT(coverage(icon.pixmap(QSize(16, 16), 1, QIcon::Disabled).toImage()), enabled / 2);
}

TEST(Symbols, theSheetLooksAsAccepted) {
    const QColor light(246, 246, 246);
    const QColor dark(40, 40, 40);
    const QColor pale(230, 230, 230);
    EXPECT_TRUE(test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, QStringLiteral("symbols-light"),
                                    sheet(1, light, ink), test::rounding));
    EXPECT_TRUE(test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, QStringLiteral("symbols-light-2x"),
                                    sheet(2, light, ink), test::rounding));
    EXPECT_TRUE(test::matchesGolden(MARROWFIN_TEST_SOURCE_DIR, QStringLiteral("symbols-dark-2x"),
                                    sheet(2, dark, pale), test::rounding));
}
