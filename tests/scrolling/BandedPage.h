// Pages of coloured bands and of marks, made without a font, and frames cut out of them. Tests only.
#pragma once

#include "imaging/Image.h"

#include <QColor>
#include <QImage>
#include <random>

namespace marrowfin::testsupport {

// Bands 20 rows high, each of another hue.
inline QImage bandedPage(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        const QRgb colour = QColor::fromHsv((y / 20 * 37) % 360, 200, 220).rgb();
        std::fill_n(reinterpret_cast<QRgb*>(pixels.scanLine(y)), width, colour);
    }
    return pixels;
}

// Lines of dark marks on white, 12 rows of 20, no two alike.
inline QImage markedPage(int width, int height, unsigned seed = 3) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(Qt::white);
    std::mt19937 random(seed);
    for (int top = 4; top + 12 < height; top += 20)
        for (int x = 8; x + 6 < width * 3 / 4; x += 8)
            for (int y = top; y < top + 12; ++y)
                for (int i = 0; i < 6; ++i)
                    if (random() % 2 == 0)
                        pixels.setPixel(x + i, y, qRgb(40, 40, 48));
    return pixels;
}

inline QImage cut(const QImage& page, int row, int rows) {
    return page.copy(0, row, page.width(), rows);
}

// At this many pixels in a point.
inline imaging::Image frameAt(const QImage& page, int row, int rows, double density = 1) {
    return imaging::Image::withSize(cut(page, row, rows), QSizeF(page.width(), rows) / density);
}

} // namespace marrowfin::testsupport
