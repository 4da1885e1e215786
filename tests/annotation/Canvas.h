// A small picture for tests to paint records on. Sizes are image points; the picture has `density` pixels to
// a point.
#pragma once

#include "Records.h"

#include <QImage>
#include <QPainter>

namespace marrowfin::test {

inline QImage canvas(QSize points, double density = 1, QColor background = Qt::white) {
    QImage picture(points * density, QImage::Format_RGB32);
    picture.fill(background);
    return picture;
}

inline void paint(QImage& picture, const QList<annotation::AnyAnnotation>& ink, double density = 1) {
    QPainter painter(&picture);
    painter.scale(density, density);
    for (const annotation::AnyAnnotation& one : ink)
        one.draw(painter);
}

inline QImage painted(const QList<annotation::AnyAnnotation>& ink, QSize points, double density = 1,
                      QColor background = Qt::white) {
    QImage picture = canvas(points, density, background);
    paint(picture, ink, density);
    return picture;
}

// The smallest rectangle around all pixels that differ.
inline QRect changedArea(const QImage& before, const QImage& after) {
    QRect area;
    for (int y = 0; y < before.height(); ++y)
        for (int x = 0; x < before.width(); ++x)
            if (before.pixel(x, y) != after.pixel(x, y))
                area |= QRect(x, y, 1, 1);
    return area;
}

inline bool isUntouched(const QImage& picture, const QRect& area, QColor background = Qt::white) {
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (picture.pixelColor(x, y) != background)
                return false;
    return true;
}

// How much of the pixel is ink of this colour rather than background, roughly: 0 to 1 by the red-green
// distance.
inline double blackness(const QImage& picture, int x, int y) {
    return 1 - qGray(picture.pixel(x, y)) / 255.0;
}

} // namespace marrowfin::test
