// What lies beneath the ink, as device pixels that are kept until something about it changes: background,
// the image's shadow, the image itself resampled by area, and its hairline. Main thread.
#pragma once

#include "base/SystemColors.h"
#include "editor/CanvasFit.h"
#include "imaging/Image.h"

#include <QImage>
#include <QRect>
#include <QTransform>

namespace marrowfin::editor {

class CanvasBackdrop {
public:
    struct Key {
        QSizeF view;
        CanvasFit fit;
        QTransform viewToLayer; // layer: device pixels from the canvas's top left corner
        imaging::Image base;
        ColorScheme scheme = ColorScheme::Light;

        friend bool operator==(const Key&, const Key&) = default;
    };

    // Makes the layer anew if the key is another one than last time, and says so.
    bool prepare(const Key& key);
    // Opaque.
    const QImage& layer() const { return pixels; }
    // Where the image stands in the layer.
    const QRect& imageRect() const { return target; }
    // The image at the layer's size.
    const QImage& scaledBase() const { return scaled; }

private:
    void paint();

    Key made;
    QImage pixels;
    QRect target;
    QImage scaled;
};

} // namespace marrowfin::editor
