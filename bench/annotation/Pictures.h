// What is measured on: a made-up screen (flat areas, lines of text-like marks, a photo of noise) of any size.
#pragma once

#include <QImage>
#include <random>

namespace marrowfin::bench {

inline QImage screenful(int width, int height) {
    QImage pixels(width, height, QImage::Format_RGB32);
    std::mt19937 random(7);
    for (int y = 0; y < height; ++y) {
        auto* row = reinterpret_cast<QRgb*>(pixels.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const bool photo = x > width / 2 && y > height / 2;
            const bool mark = y % 24 < 12 && (x / 3) % 5 < 3;
            row[x] = photo ? random() | 0xff000000u : mark ? qRgb(40, 40, 60) : qRgb(246, 244, 240);
        }
    }
    return pixels;
}

} // namespace marrowfin::bench
