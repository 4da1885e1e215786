// Makes a menu stand above our surfaces and leave nothing that a compositor could let fade: it is blended (so
// that it can be transparent), and cleared just before it is unmapped. Its submenus too. Main thread; belongs
// to the menu.
#pragma once

#include "platform/x11/surfaces/SurfaceContext.h"

#include <QObject>
#include <memory>

class QMenu;

namespace marrowfin::x11 {

class TracelessMenu final : public QObject {
    Q_OBJECT
public:
    // Adopting a menu again does nothing but look for new submenus.
    static void adopt(const std::shared_ptr<SurfaceContext>& context, QMenu& menu);
    ~TracelessMenu() override;

private:
    TracelessMenu(std::shared_ptr<SurfaceContext> context, QMenu& menu);
    bool eventFilter(QObject* watched, QEvent* event) override;
    void adoptSubmenus();
    void aboutToBeMapped();
    void aboutToBeUnmapped();
    void unmapped();

    const std::shared_ptr<SurfaceContext> context;
    QMenu& menu;
    xcb_window_t shown = XCB_WINDOW_NONE;
    SeenGone seen = SeenGone::NotYet;
};

} // namespace marrowfin::x11
