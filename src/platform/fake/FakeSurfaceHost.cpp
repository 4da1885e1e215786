#include "platform/fake/FakeSurfaceHost.h"

#include <QMenu>
#include <QSinglePointEvent>
#include <algorithm>

namespace marrowfin::fake {

using namespace platform;

FakeSurface::FakeSurface(FakeSurfaceHost& owner, QWidget& hosted, const SurfaceSpec& asked)
    : widget(&hosted), traits(asked), life(owner.life) {
    hosted.setWindowFlags(Qt::FramelessWindowHint | Qt::Tool);
    hosted.setAttribute(Qt::WA_ShowWithoutActivating, asked.keyboard == SurfaceKeyboard::None);
}

FakeSurface::~FakeSurface() {
    orderOut();
    if (host() != nullptr)
        std::erase(host()->surfaces, this);
}

void FakeSurface::setFrame(const DesktopRect& frame) {
    current = frame;
    frames.push_back(frame);
    if (widget)
        widget->resize(frame.rect.size().toSize());
    if (widget && host() != nullptr && !host()->tellsPlaces)
        widget->move(0, 0);
}

DesktopRect FakeSurface::frame() const {
    return current;
}

DesktopPoint FakeSurface::locate(const QSinglePointEvent& event) const {
    if (host() != nullptr && !host()->tellsPlaces)
        return {current.rect.bottomLeft() + QPointF(event.scenePosition().x(), -event.scenePosition().y())};
    return {{event.globalPosition().x(), -event.globalPosition().y()}};
}

void FakeSurface::orderFront() {
    if (host() == nullptr)
        return;
    std::vector<FakeSurface*>& order = host()->order;
    std::erase(order, this);
    const auto above = std::find_if(order.begin(), order.end(), [this](FakeSurface* other) {
        return windowLevel(other->traits.level) > windowLevel(traits.level);
    });
    order.insert(above, this);
    if (!widget)
        return;
    widget->show();
    if (traits.keyboard != SurfaceKeyboard::None)
        widget->activateWindow();
}

void FakeSurface::orderOut() {
    if (host() != nullptr)
        std::erase(host()->order, this);
    if (widget)
        widget->hide();
}

bool FakeSurface::isVisible() const {
    return widget && widget->isVisible();
}
void FakeSurface::setInputRegion(const QRegion& region) {
    inputRegion = region;
}
void FakeSurface::setOutline(const QRegion& region) {
    outline = region;
}
bool FakeSurface::isComposited() const {
    return host() != nullptr && host()->composited;
}
void FakeSurface::setOpacity(double value) {
    opacity = value;
}

Outcome<void> FakeSurface::retire() {
    retired = true;
    orderOut();
    return host() != nullptr ? host()->barrier() : settled<void>({});
}

std::unique_ptr<Surface> FakeSurfaceHost::host(QWidget& widget, const SurfaceSpec& traits) {
    ++hostedCount;
    auto surface = std::make_unique<FakeSurface>(*this, widget, traits);
    surfaces.push_back(surface.get());
    return surface;
}

void FakeSurfaceHost::setComposited(bool value) {
    composited = value;
    for (FakeSurface* surface : surfaces)
        Q_EMIT surface->compositedChanged();
}

void FakeSurfaceHost::adoptMenu(QMenu&) {
    ++adoptedMenus;
}

void FakeSurfaceHost::popUp(QMenu& menu, const DesktopPoint& point) {
    popUps.push_back(point);
    menu.popup({});
}

Outcome<void> FakeSurfaceHost::transientsGone() {
    ++barriers;
    return barrier();
}

Outcome<void> FakeSurfaceHost::barrier() {
    auto [settler, outcome] = makeOutcome<void>();
    if (holdBarriers)
        held.push_back(settler);
    else
        settler.settle({});
    return outcome;
}

void FakeSurfaceHost::releaseBarriers() {
    for (const Settler<void>& settler : std::exchange(held, {}))
        settler.settle({});
}

FakeSurface* FakeSurfaceHost::surfaceOf(const QWidget* widget) const {
    for (FakeSurface* surface : surfaces)
        if (surface->widget == widget)
            return surface;
    return nullptr;
}

} // namespace marrowfin::fake
