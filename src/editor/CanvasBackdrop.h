// What lies beneath the ink, as device pixels that are kept until something about it changes: background,
// the image's shadow, the image itself resampled by area, and its hairline. Main thread.
#pragma once

#include "base/SystemColors.h"
#include "editor/CanvasFit.h"
#include "imaging/Image.h"
#include "imaging/ScaledCopy.h"

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

    // Told when a large image's copy has been made, and the next prepare() has another layer.
    explicit CanvasBackdrop(std::function<void()> baseArrived) : base(std::move(baseArrived)) {}

    // Makes the layer anew if the key is another one than last time or a copy has arrived, and says so.
    bool prepare(const Key& key);
    // Opaque.
    const QImage& layer() const { return pixels; }
    // Where the image stands in the layer.
    const QRect& imageRect() const { return target; }
    // The image at the layer's size; of a large one a rough copy at first.
    const QImage& scaledBase() const { return scaled; }

private:
    void paint();

    Key made;
    QImage pixels;
    QRect target;
    imaging::ScaledCopy base;
    QImage scaled;
};

} // namespace marrowfin::editor
