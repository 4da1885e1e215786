// Puts a widget where a y-up frame says, in its parent. Beside LayerHost this is the only flip. Points. Main
// thread.
#pragma once

#include <QRectF>

class QWidget;

namespace marrowfin::chrome {

// The frame is in the parent's space, origin at its bottom left; it goes to whole points.
void place(QWidget& widget, const QRectF& frame);
// The widget's y-up frame in its parent.
QRectF placed(const QWidget& widget);

} // namespace marrowfin::chrome
