// A page of lines and a patch, so that a shift or a blur of it is seen. Tests only.
#pragma once

#include <QImage>
#include <QPainter>

namespace marrowfin::testsupport {

inline QImage linedPage(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    pixels.fill(Qt::white);
    QPainter painter(&pixels);
    for (int y = 8; y < height; y += 16)
        painter.fillRect(12, y, width - 24 - (y * 7) % (width / 2), 6, QColor(70, 74, 82));
    painter.fillRect(width / 2, height / 3, width / 4, height / 4, QColor(40, 120, 200));
    return pixels;
}

} // namespace marrowfin::testsupport
