#include "scrolling/ImageRegistration.h"

#include "scrolling/BandedPage.h"

#include <QPainter>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::scrolling;
using namespace marrowfin::testsupport;

namespace {

std::optional<Movement> movementOf(const QImage& older, const QImage& newer) {
    const Result<std::optional<Movement>> movement = ImageRegistration::movement(older, newer);
    EXPECT_TRUE(movement);
    return movement.value_or(std::nullopt);
}
// 0 where there is none.
int offsetOf(const QImage& older, const QImage& newer) {
    return movementOf(older, newer).value_or(Movement()).offset;
}

struct Bars {
    int header = 0;
    int footer = 0;
    int sidebar = 0;
};

// The page scrolled to this row, under bars that stand still.
QImage lookUnder(const QImage& page, int row, int rows, const Bars& bars) {
    QImage frame = cut(page, row, rows);
    QPainter painter(&frame);
    const auto bar = [&](QRect box, const QColor& ground, const QColor& mark) {
        painter.setClipRect(box);
        painter.fillRect(box, ground);
        for (int i = 0; i < std::min(box.width(), box.height()) / 2; i += 3)
            painter.fillRect(QRect(box.left() + 5 + 4 * i, box.top() + i, 9, 2), mark);
    };
    bar(QRect(0, 0, frame.width(), bars.header), QColor(225, 230, 240), QColor(30, 40, 60));
    bar(QRect(0, rows - bars.footer, frame.width(), bars.footer), QColor(40, 44, 52), Qt::white);
    bar(QRect(0, bars.header, bars.sidebar, rows - bars.header - bars.footer), QColor(240, 240, 240),
        Qt::black);
    return frame;
}

QImage grained(QImage pixels, unsigned seed) {
    std::mt19937 random(seed);
    for (int y = 0; y < pixels.height(); ++y)
        for (int x = 0; x < pixels.width(); ++x)
            pixels.setPixel(x, y, (pixels.pixel(x, y) & 0xfffcfcfcU) | (random() & 0x00030303U));
    return pixels;
}

TEST(ImageRegistration, everyOffsetIsExactInBothDirections) {
    const QImage page = markedPage(400, 900);
    const QImage middle = cut(page, 300, 300);
    for (int offset = -250; offset <= 250; ++offset)
        EXPECT_EQ(offsetOf(middle, cut(page, 300 + offset, 300)), offset);
}

TEST(ImageRegistration, aboveZeroMeansTheContentWentUp) {
    const QImage page = markedPage(400, 600);
    EXPECT_EQ(movementOf(cut(page, 0, 300), cut(page, 120, 300)), (Movement{120, 0, 0}));
    EXPECT_EQ(movementOf(cut(page, 120, 300), cut(page, 0, 300)), (Movement{-120, 0, 0}));
}

TEST(ImageRegistration, whatIsTheSameHasStayed) {
    const QImage frame = markedPage(400, 300);
    EXPECT_EQ(movementOf(frame, frame.copy()), Movement());
    QImage blank(400, 300, QImage::Format_RGB32);
    blank.fill(Qt::white);
    EXPECT_EQ(movementOf(blank, blank.copy()), Movement());
}

TEST(ImageRegistration, unrelatedFramesHaveNoOffset) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        EXPECT_FALSE(movementOf(markedPage(400, 300, seed), markedPage(400, 300, seed + 100))) << seed;
        EXPECT_FALSE(movementOf(markedPage(400, 300, seed), bandedPage(400, 300))) << seed;
    }
}

TEST(ImageRegistration, tellsHowManyRowsStandStill) {
    const QImage page = markedPage(400, 1200);
    for (const Bars& bars :
         {Bars{48, 0, 0}, Bars{0, 36, 0}, Bars{48, 36, 0}, Bars{31, 17, 90}, Bars{0, 0, 120}})
        for (const int offset : {5, 23, 60, 120, 150, -40, -120}) {
            const std::optional<Movement> movement =
                movementOf(lookUnder(page, 400, 300, bars), lookUnder(page, 400 + offset, 300, bars));
            ASSERT_TRUE(movement) << offset;
            EXPECT_EQ(movement->offset, offset);
            // A bar's last rows can't be told from the page where both are blank.
            EXPECT_LE(movement->stillTop, bars.header);
            EXPECT_GE(movement->stillTop, bars.header - 2) << offset;
            EXPECT_LE(movement->stillBottom, bars.footer);
            EXPECT_GE(movement->stillBottom, bars.footer - 2) << offset;
        }
}

TEST(ImageRegistration, blankRowsUnderAHeaderBelongToIt) {
    // The page beneath has marks where the header is blank, so drawing those rows again would hide them.
    const QImage page = markedPage(400, 900);
    const auto look = [&](int row) {
        QImage frame = cut(page, row, 300);
        QPainter painter(&frame);
        painter.fillRect(0, 0, 400, 50, Qt::white);
        painter.fillRect(20, 10, 120, 8, Qt::darkBlue);
        return frame;
    };
    const std::optional<Movement> movement = movementOf(look(200), look(270));
    ASSERT_TRUE(movement);
    EXPECT_EQ(movement->offset, 70);
    // Rows 46 to 49 of the header lie where the page is blank too.
    EXPECT_GE(movement->stillTop, 46);
    EXPECT_LE(movement->stillTop, 50);
}

TEST(ImageRegistration, aScrollBarOfItsOwnSpeedDoesNotMislead) {
    const QImage page = markedPage(400, 3000);
    const auto look = [&](int row) {
        QImage frame = cut(page, row, 300);
        QPainter painter(&frame);
        painter.fillRect(386, 0, 14, 300, QColor(238, 238, 238));
        painter.fillRect(388, row / 10, 10, 30, QColor(140, 140, 140));
        return frame;
    };
    for (const int offset : {8, 40, 121, -60})
        EXPECT_EQ(offsetOf(look(500), look(500 + offset)), offset);
}

TEST(ImageRegistration, aSpinnerAloneIsNoMovement) {
    for (const QImage& ground : {markedPage(400, 300), bandedPage(400, 300)}) {
        QImage older = ground;
        QImage newer = ground;
        // The same dot at another height: it moved, the page didn't.
        QPainter(&older).fillRect(180, 100, 40, 40, Qt::red);
        QPainter(&newer).fillRect(180, 130, 40, 40, Qt::red);
        EXPECT_EQ(offsetOf(older, newer), 0);
    }
}

TEST(ImageRegistration, somethingThatMovesBesideAStillPageIsNoMovement) {
    QImage older = markedPage(400, 300);
    QImage newer = older;
    const QImage moving = markedPage(60, 50, 9);
    QPainter(&older).drawImage(330, 80, moving);
    QPainter(&newer).drawImage(330, 110, moving);
    EXPECT_EQ(offsetOf(older, newer), 0);
}

TEST(ImageRegistration, aBlinkingCaretIsNoMovement) {
    QImage blank(400, 300, QImage::Format_RGB32);
    blank.fill(Qt::white);
    QImage lit = blank;
    QPainter(&lit).fillRect(60, 120, 2, 18, Qt::black);
    EXPECT_EQ(movementOf(blank, lit), Movement());
}

TEST(ImageRegistration, oneLineOnABlankPageScrolls) {
    const auto look = [](int row) {
        QImage frame(400, 300, QImage::Format_RGB32);
        frame.fill(Qt::white);
        QPainter(&frame).drawImage(40, row, markedPage(200, 26));
        return frame;
    };
    EXPECT_EQ(offsetOf(look(200), look(120)), 80);
}

TEST(ImageRegistration, equalRowsAreRefused) {
    QImage rows(400, 900, QImage::Format_RGB32);
    const QImage row = markedPage(400, 24);
    QPainter painter(&rows);
    for (int y = 0; y < 900; y += 24)
        painter.drawImage(0, y, row);
    painter.end();
    for (const int offset : {5, 24, 40, 100})
        EXPECT_EQ(offsetOf(cut(rows, 0, 300), cut(rows, offset, 300)), 0) << offset;
}

TEST(ImageRegistration, grainIsSeenThrough) {
    const QImage page = markedPage(400, 900);
    for (const int offset : {7, 60, 149, -80})
        EXPECT_EQ(offsetOf(grained(cut(page, 300, 300), 1), grained(cut(page, 300 + offset, 300), 2)),
                  offset);
    EXPECT_EQ(offsetOf(grained(cut(page, 300, 300), 1), grained(cut(page, 300, 300), 2)), 0);
}

TEST(ImageRegistration, alphaAndFormatPlayNoPart) {
    const QImage page = markedPage(400, 600);
    QImage older = cut(page, 0, 300);
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x)
            reinterpret_cast<QRgb*>(older.scanLine(y))[x] &= 0x00ffffffU;
    // Further than brightness is correlated: the cells themselves have to match.
    const QImage newer = cut(page, 200, 300);
    EXPECT_EQ(offsetOf(older, newer), 200);
    EXPECT_EQ(offsetOf(older, newer.convertToFormat(QImage::Format_RGB888)), 200);
    EXPECT_EQ(offsetOf(older, newer.convertToFormat(QImage::Format_RGBA8888)), 200);
}

TEST(ImageRegistration, otherSizesAreCompared) {
    const QImage page = bandedPage(400, 600);
    EXPECT_EQ(offsetOf(cut(page, 0, 300), cut(page, 40, 220)), 40);
    EXPECT_EQ(offsetOf(cut(page, 0, 300), cut(page, 40, 300).scaled(333, 300)), 40);
}

TEST(ImageRegistration, smallAreasAreNoTrouble) {
    EXPECT_FALSE(movementOf(QImage(), QImage()));
    EXPECT_FALSE(movementOf(markedPage(40, 30), QImage()));
    for (const QSize size : {QSize(1, 1), QSize(6, 6), QSize(3, 400), QSize(400, 3), QSize(17, 40)})
        EXPECT_EQ(
            offsetOf(markedPage(size.width(), size.height(), 1), markedPage(size.width(), size.height(), 1)),
            0);
    const QImage page = markedPage(60, 200);
    EXPECT_EQ(offsetOf(cut(page, 0, 60), cut(page, 15, 60)), 15);
}

} // namespace
