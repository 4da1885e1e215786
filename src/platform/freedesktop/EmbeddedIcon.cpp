#include "platform/freedesktop/EmbeddedIcon.h"

#include "platform/freedesktop/DrawnIcon.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QWidget>

namespace marrowfin::freedesktop {

namespace {
// A tray shows what we painted in its own time, and tells nobody.
constexpr int settlingMilliseconds = 300;
} // namespace

EmbeddedIcon::EmbeddedIcon(Click click) : click(std::move(click)) {
    settled.setSingleShot(true);
    settled.setInterval(settlingMilliseconds);
    // The toolkit's own signal comes when the button goes down (a menu opened by it would take the release
    // for a choice), and not at all for a press that it counts as the second of a double click. So the
    // releases are taken from the window that it docks, whenever it makes one.
    qApp->installEventFilter(this);
    connect(&settled, &QTimer::timeout, this, &EmbeddedIcon::lookAtBackground);
}

void EmbeddedIcon::setIcon(platform::StatusItem::IconDrawer drawer) {
    icon = std::move(drawer);
    giveIcon();
    tray.show();
}

void EmbeddedIcon::giveIcon() {
    const auto drawAndLook = [this](int pixels, bool dark) {
        settled.start();
        return icon(pixels, dark);
    };
    tray.setIcon(drawnIcon(drawAndLook, darkTray));
}

// The corners of the icon are empty: there the tray shows through.
void EmbeddedIcon::lookAtBackground() {
    const QRect place = geometry();
    QScreen* screen = QGuiApplication::screenAt(place.center());
    if (place.isEmpty() || !screen)
        return;
    const QRect local = place.translated(-screen->geometry().topLeft());
    const QImage shown = screen->grabWindow(0, local.x(), local.y(), local.width(), local.height()).toImage();
    if (shown.isNull())
        return;
    const int right = shown.width() - 1;
    const int bottom = shown.height() - 1;
    int lightness = 0;
    for (const QPoint corner : {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
        lightness += qGray(shown.pixel(corner));
    const bool dark = lightness < 4 * 128;
    if (dark == darkTray)
        return;
    darkTray = dark;
    giveIcon();
}

bool EmbeddedIcon::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::MouseButtonRelease || !watched->inherits("QSystemTrayIconSys"))
        return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    // A press that was dragged off the icon is a change of mind.
    if (!static_cast<QWidget*>(watched)->rect().contains(mouse->position().toPoint()))
        return false;
    if (mouse->button() == Qt::LeftButton)
        click(platform::StatusItemButton::Left);
    else if (mouse->button() == Qt::RightButton)
        click(platform::StatusItemButton::Right);
    return false;
}

} // namespace marrowfin::freedesktop
