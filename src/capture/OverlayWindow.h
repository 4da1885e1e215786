// The window under an overlay: covers one screen, painted in one translucent colour, and knows its surface.
// The views of an overlay are its children. Widget coordinates are y-down; the overlays' own rectangles are
// y-up; all are points. Main thread; owned by its overlay until it is retired.
#pragma once

#include "platform/Screens.h"
#include "platform/SurfaceHost.h"

#include <QColor>
#include <QPointer>
#include <QWidget>
#include <memory>

namespace marrowfin::capture {

class OverlayWindow : public QWidget {
    Q_OBJECT
public:
    // Hosted over the screen's whole frame, not yet shown.
    OverlayWindow(const platform::Screen& screen, QColor background, const platform::SurfaceSpec& traits);
    ~OverlayWindow() override;

    // The view covers the whole window from now on, whatever size the window system gives it.
    void fillWith(QWidget& view);
    void orderFront();
    // What of it is seen where nothing blends windows, y down.
    void setOutline(const QRegion& outline);
    // Off the screen for good; the next grab waits until it is gone. Destroys the window once it is.
    static void retire(std::unique_ptr<OverlayWindow> window);

    // A y-up rectangle of the view on the desktop.
    DesktopRect convertRectToScreen(const QRectF& rect) const;

Q_SIGNALS:
    // The window system took it away.
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    platform::Screen screen;
    QColor background;
    std::unique_ptr<platform::Surface> surface;
    QPointer<QWidget> filling;
};

} // namespace marrowfin::capture
