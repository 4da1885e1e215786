// The stitcher in its plainest form, which makes a new picture of the full height with every join. What the
// real one answers is compared with it, pixel by pixel. Tests only.
#pragma once

#include "imaging/Image.h"

#include <QImage>
#include <cmath>

namespace marrowfin::testsupport {

class PlainStitcher {
public:
    explicit PlainStitcher(const imaging::Image& first)
        : pixels(first.pixels()), size(first.size()),
          density(first.pixels().height() / first.size().height()) {}

    // The frame's content moved by this many points; of its own topmost rows none shows.
    void join(const imaging::Image& frame, double distance, int hiddenTop = 0) {
        size.setHeight(size.height() + std::abs(distance));
        const int rows = static_cast<int>(std::lround(size.height() * density));
        const int frameRows = static_cast<int>(std::lround(frame.size().height() * density));
        QImage next(pixels.width(), rows, QImage::Format_ARGB32_Premultiplied);
        next.fill(Qt::transparent);
        for (int y = 0; y < std::min(rows, pixels.height()); ++y)
            copyRow(pixels, y, next, y);
        QImage drawn = frame.pixels();
        if (drawn.size() != QSize(pixels.width(), frameRows))
            drawn = drawn.scaled(pixels.width(), frameRows, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        for (int y = hiddenTop; y < frameRows; ++y)
            if (rows - frameRows + y >= 0)
                copyRow(drawn, y, next, rows - frameRows + y);
        pixels = next;
    }

    QImage pixels;
    QSizeF size;

private:
    static void copyRow(const QImage& from, int y, QImage& to, int row) {
        for (int x = 0; x < to.width(); ++x)
            to.setPixel(x, row, from.pixel(x, y));
    }
    double density;
};

} // namespace marrowfin::testsupport
