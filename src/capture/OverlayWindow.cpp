#include "capture/OverlayWindow.h"

#include "platform/Services.h"

#include <QPaintEvent>
#include <QPainter>

namespace marrowfin::capture {

using namespace platform;

OverlayWindow::OverlayWindow(const Screen& covered, QColor colour, const SurfaceSpec& traits)
    : screen(covered), background(colour), surface(services().surfaceHost.host(*this, traits)) {
    connect(surface.get(), &Surface::closed, this, &OverlayWindow::closed);
    surface->setFrame(screen.frame);
}

OverlayWindow::~OverlayWindow() = default;

void OverlayWindow::fillWith(QWidget& view) {
    filling = &view;
    view.setGeometry(rect());
}

void OverlayWindow::resizeEvent(QResizeEvent*) {
    if (filling)
        filling->setGeometry(rect());
}

void OverlayWindow::orderFront() {
    surface->orderFront();
}

void OverlayWindow::setOutline(const QRegion& outline) {
    surface->setOutline(outline);
}

void OverlayWindow::retire(std::unique_ptr<OverlayWindow> window) {
    // From here on the window has no owner but this wait: it takes no more input and goes with its last
    // pixel.
    OverlayWindow* const leaving = window.release();
    leaving->disconnect();
    leaving->setEnabled(false);
    leaving->surface->retire().then(leaving, [leaving](const Result<void>&) { leaving->deleteLater(); });
}

DesktopRect OverlayWindow::convertRectToScreen(const QRectF& rect) const {
    return {offset(rect, minX(screen.frame.rect), minY(screen.frame.rect))};
}

void OverlayWindow::paintEvent(QPaintEvent* event) {
    if (background.alpha() == 0)
        return;
    QPainter painter(this);
    for (const QRect& part : event->region())
        painter.fillRect(part, background);
}

} // namespace marrowfin::capture
