#include "panel/CardDrag.h"

#include "base/Shared.h"

#include <QCoreApplication>
#include <QDrag>
#include <QMimeData>
#include <QPixmap>
#include <QUrl>
#include <QWidget>

namespace marrowfin::panel {

namespace {
QPixmap previewPixmap(const DragPreview& preview, double density) {
    const QSize pixels = (preview.frame.size() * density).toSize().expandedTo({1, 1});
    QImage image = preview.picture.isNull()
                       ? QImage()
                       : preview.picture.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    image.setDevicePixelRatio(density);
    return QPixmap::fromImage(image);
}
} // namespace

DragRunner& DragRunner::shared() {
    return Shared<DragRunner>::instance();
}

Qt::DropAction DragRunner::run(QDrag& drag, QWidget& source) {
    // The card never has the keyboard; for the length of the drag it does, so that Escape cancels it.
    source.grabKeyboard();
    const Qt::DropAction action = drag.exec(Qt::CopyAction);
    source.releaseKeyboard();
    return action;
}

Drop runCardDrag(QWidget& source, const CardDrag& drag) {
    // Not the card's: a program may fetch what was dropped on it long after the card has faded. The window
    // system deletes it when the other side is done.
    auto* session = new QDrag(QCoreApplication::instance());
    auto* data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(drag.file)});
    session->setMimeData(data);
    session->setPixmap(previewPixmap(drag.preview, source.devicePixelRatioF()));
    session->setHotSpot((drag.preview.grip - drag.preview.frame.topLeft()).toPoint());
    return DragRunner::shared().run(*session, source) == Qt::IgnoreAction ? Drop::Cancelled : Drop::Completed;
}

} // namespace marrowfin::panel
