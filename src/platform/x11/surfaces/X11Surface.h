// One hosted widget on X11: an override-redirect window with an alpha channel. Main thread; belongs to
// whoever asked for it.
#pragma once

#include "platform/SurfaceHost.h"
#include "platform/x11/surfaces/SurfaceContext.h"
#include "platform/x11/surfaces/WindowRequests.h"

#include <QImage>
#include <QPointer>
#include <QWidget>
#include <memory>

namespace marrowfin::x11 {

class X11Surface final : public platform::Surface {
    Q_OBJECT
public:
    X11Surface(std::shared_ptr<SurfaceContext> context, QWidget& widget, const platform::SurfaceSpec& traits);
    ~X11Surface() override;

    void setFrame(const DesktopRect& frame) override;
    DesktopRect frame() const override { return given; }
    DesktopPoint locate(const QSinglePointEvent& event) const override;
    void orderFront() override;
    void orderOut() override;
    bool isVisible() const override { return state == State::Shown; }
    void setInputRegion(const QRegion& region) override;
    void setOutline(const QRegion& outline) override;
    bool isComposited() const override;
    void setOpacity(double opacity) override;
    Outcome<void> retire() override;

    platform::SurfaceLevel level() const { return traits.level; }
    xcb_window_t window() const;

private:
    // Leaving: still mapped, but transparent and without input.
    enum class State { Out, Shown, Leaving };

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool filterWindow(QEvent* event);
    void paintStill();
    void applyFrame();
    void applyInput();
    void applyOutline();
    std::future<QImage> readStill();
    void show();
    void takeInput();
    void giveInputBack();
    void leave();
    void leaveNow();
    void makeInvisible();
    void empty();
    void makeVisible();
    void unmap(SeenGone seen);
    void aboutToBeDestroyed();
    void widgetLost();
    void compositorChanged();
    void screenRemoved(const QScreen* screen);
    double scale() const;
    UntilPainted untilPainted() const;

    const std::shared_ptr<SurfaceContext> context;
    const platform::SurfaceSpec traits;
    QPointer<QWidget> widget;
    State state = State::Out;
    bool retired = false;
    // Counts the times it left, so that an ended departure knows whether it was called back.
    int departure = 0;
    DesktopRect given;
    QRegion inputRegion;
    QRegion outline;
    // Stands over a still for good, because nothing blended when it was made. Then its pixels have no alpha:
    // the server keeps every window that has some beside the screen, and would hold and copy the screen twice
    // more.
    bool isOpaque = false;
    // The screen beneath while nothing blends, and where it was taken.
    QImage still;
    QRect stillFrame;
    bool updatesWereEnabled = true;
    bool holdsContents = false;
};

} // namespace marrowfin::x11
