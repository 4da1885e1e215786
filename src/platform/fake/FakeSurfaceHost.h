// Shows hosted widgets as plain top-level windows of the offscreen plugin, keeps their frames, and records
// every call. Retiring settles when the test says so, or at once. Tests only.
#pragma once

#include "platform/SurfaceHost.h"

#include <QPointer>
#include <QWidget>
#include <vector>

namespace marrowfin::fake {

class FakeSurfaceHost;

class FakeSurface : public platform::Surface {
    Q_OBJECT
public:
    FakeSurface(FakeSurfaceHost& host, QWidget& widget, const platform::SurfaceSpec& traits);
    ~FakeSurface() override;

    void setFrame(const DesktopRect& frame) override;
    DesktopRect frame() const override;
    DesktopPoint locate(const QSinglePointEvent& event) const override;
    void orderFront() override;
    void orderOut() override;
    bool isVisible() const override;
    void setInputRegion(const QRegion& region) override;
    void setOutline(const QRegion& outline) override;
    bool isComposited() const override;
    void setOpacity(double opacity) override;
    Outcome<void> retire() override;

    // What was asked, for the test.
    QPointer<QWidget> widget;
    platform::SurfaceSpec traits;
    QRegion inputRegion;
    QRegion outline;
    double opacity = 1;
    bool retired = false;
    std::vector<DesktopRect> frames; // every setFrame, in order

    // Plays the screen going away.
    void takeAway() {
        orderOut();
        Q_EMIT closed();
    }

private:
    // Null once the played desktop is gone: a window on its way out may outlive it.
    FakeSurfaceHost* host() const { return *life; }
    std::shared_ptr<FakeSurfaceHost*> life;
    DesktopRect current;
};

class FakeSurfaceHost : public platform::SurfaceHost {
public:
    ~FakeSurfaceHost() override { *life = nullptr; }
    std::unique_ptr<platform::Surface> host(QWidget& widget, const platform::SurfaceSpec& traits) override;
    void adoptMenu(QMenu& menu) override;
    void popUp(QMenu& menu, const DesktopPoint& point) override;
    Outcome<void> transientsGone() override;

    // Plays a compositor that goes, or comes back.
    void setComposited(bool value);
    bool composited = true;

    // Those alive, oldest first.
    std::vector<FakeSurface*> surfaces;
    // The visible ones, back to front.
    std::vector<FakeSurface*> order;
    int hostedCount = 0;
    int adoptedMenus = 0;
    // Where menus were opened, in order.
    std::vector<DesktopPoint> popUps;
    // False plays a window system that tells no window where it is: widgets see themselves at (0, 0), and the
    // global position of an event is that in its window.
    bool tellsPlaces = true;
    int barriers = 0;
    // When set, retire() and transientsGone() wait for releaseBarriers().
    bool holdBarriers = false;
    void releaseBarriers();

    // The surface of this widget, or null.
    FakeSurface* surfaceOf(const QWidget* widget) const;

private:
    friend class FakeSurface;
    Outcome<void> barrier();
    std::vector<Settler<void>> held;
    std::shared_ptr<FakeSurfaceHost*> life = std::make_shared<FakeSurfaceHost*>(this);
};

} // namespace marrowfin::fake
