// One edit of text on the canvas. Image points, y down. A value; any thread.
#pragma once

#include <QColor>
#include <QPointF>
#include <QUuid>
#include <optional>

namespace marrowfin::editor {

struct TextSession {
    std::optional<QUuid> annotationID; // the text that is edited again; none for new text
    QPointF baseline;                  // the left end of the first line's baseline
    double fontSize = 24.0;
    QColor color;
};

} // namespace marrowfin::editor
