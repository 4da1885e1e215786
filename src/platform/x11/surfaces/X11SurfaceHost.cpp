#include "platform/x11/surfaces/X11SurfaceHost.h"

#include "platform/x11/layout/QtPlace.h"
#include "platform/x11/surfaces/SurfaceContext.h"
#include "platform/x11/surfaces/TracelessMenu.h"
#include "platform/x11/surfaces/X11Surface.h"

#include <QMenu>

namespace marrowfin::x11 {

namespace {

class X11SurfaceHost final : public platform::SurfaceHost {
public:
    X11SurfaceHost(std::unique_ptr<Connection> qt, std::shared_ptr<GrabLink> grabs)
        : context(std::make_shared<SurfaceContext>(std::move(qt), std::move(grabs))) {}

    std::unique_ptr<platform::Surface> host(QWidget& widget, const platform::SurfaceSpec& traits) override {
        return std::make_unique<X11Surface>(context, widget, traits);
    }

    void adoptMenu(QMenu& menu) override { TracelessMenu::adopt(context, menu); }

    void popUp(QMenu& menu, const DesktopPoint& point) override { menu.popup(qtPoint(point)); }

    Outcome<void> transientsGone() override {
        auto [settler, outcome] = makeOutcome<void>();
        context->whenClean([settler = settler] { settler.settle({}); });
        return outcome;
    }

private:
    const std::shared_ptr<SurfaceContext> context;
};

} // namespace

Result<std::unique_ptr<platform::SurfaceHost>> makeSurfaceHost(std::shared_ptr<GrabLink> grabs) {
    auto qt = Connection::adoptQt();
    if (!qt)
        return tl::unexpected(qt.error());
    return std::make_unique<X11SurfaceHost>(std::move(*qt), std::move(grabs));
}

} // namespace marrowfin::x11
