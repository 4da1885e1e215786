// Screens as people have them, drawn afresh from a fixed seed, for measuring what depends on content. Pixels,
// opaque. GUI thread (text).
#pragma once

#include <QImage>

namespace marrowfin::bench {

enum class Wallpaper { Gradient, Photo };
enum class PictureWindow { None, Photo };

// Windows with text, code, a terminal, a file list and a dialog over a wallpaper.
QImage sampleScreen(QSize size, Wallpaper wallpaper, PictureWindow picture);
// A photograph's statistics: large smooth shapes, finer ones on top, sensor noise.
QImage samplePhoto(QSize size, quint32 seed);
// Every channel of every pixel random.
QImage sampleNoise(QSize size);

} // namespace marrowfin::bench
