#include "chrome/Place.h"

#include "base/Invariant.h"

#include <QWidget>

namespace marrowfin::chrome {

void place(QWidget& widget, const QRectF& frame) {
    MARROWFIN_INVARIANT(widget.parentWidget());
    const double height = widget.parentWidget()->height();
    widget.setGeometry(
        QRectF(frame.x(), height - frame.y() - frame.height(), frame.width(), frame.height()).toRect());
}

QRectF placed(const QWidget& widget) {
    MARROWFIN_INVARIANT(widget.parentWidget());
    const QRect g = widget.geometry();
    return QRectF(g.x(), widget.parentWidget()->height() - g.y() - g.height(), g.width(), g.height());
}

} // namespace marrowfin::chrome
