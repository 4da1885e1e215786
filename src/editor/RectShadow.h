// The shadow that a rectangle throws on what is around it, as a Gaussian and exact: no blur is run. Device
// pixels. Any thread.
#pragma once

#include <QImage>
#include <QRect>

namespace marrowfin::editor {

struct RectShadow {
    double drop = 0;  // how far it falls down
    double sigma = 0; // of the Gaussian
    double alpha = 0; // of the black it is made of
};

// Darkens the pixels (RGB32) around the rectangle, and leaves those inside it.
void paintRectShadow(QImage& pixels, const QRect& rect, const RectShadow& shadow);

} // namespace marrowfin::editor
