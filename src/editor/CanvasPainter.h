// Paints the canvas: what lies beneath the ink from a kept layer, then the ink, the selection and the crop,
// all of it only where it is asked to. View points; layers are device pixels from the canvas's top left
// corner. Owned by the canvas. Main thread.
#pragma once

#include "annotation/AnyAnnotation.h"
#include "editor/CanvasBackdrop.h"
#include "editor/LiveBlur.h"
#include "editor/SettledInk.h"
#include "imaging/Image.h"

#include <QPainter>
#include <QRegion>
#include <optional>

namespace marrowfin::editor {

class CanvasPainter {
public:
    // Everything the canvas shows but the text being typed.
    struct Scene {
        CanvasBackdrop::Key backdrop; // its layer transform is found by the painter
        QList<annotation::AnyAnnotation> annotations;
        std::optional<annotation::AnyAnnotation> inProgress;
        std::optional<QUuid> selected;
        std::optional<QUuid> hidden; // stands in the inline editor instead
        std::optional<QRectF> crop;
    };

    // Told when all has to be painted again, because a large image's copy has been made meanwhile.
    explicit CanvasPainter(std::function<void()> baseArrived) : backdrop(std::move(baseArrived)) {}

    // The painter's user space is view points.
    void paint(QPainter& painter, const QRegion& region, Scene scene);

private:
    // Composes the part, in layer pixels, in the frame.
    void compose(QPainter& onFrame, const Scene& scene, const QRect& part, const RecordPainter& records);
    void paintOverlays(QPainter& painter, const Scene& scene) const;

    CanvasBackdrop backdrop;
    LiveBlur blur;
    SettledInk settled;
    std::vector<PlacedRecord> live; // of the paint that goes on: what is painted on the settled ink
    QImage frame;                   // only what was composed last is of any use
};

} // namespace marrowfin::editor
