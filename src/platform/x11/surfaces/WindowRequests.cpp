#include "platform/x11/surfaces/WindowRequests.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <cmath>
#include <vector>
#include <xcb/shape.h>

namespace marrowfin::x11 {

namespace {

// The protocol's largest rectangle that no server overflows on.
constexpr std::uint16_t everything = 32767;
constexpr int clearance = 64; // between a window that is off the screen and the screen

void setShape(const Connection& qt, xcb_window_t window, xcb_shape_kind_t kind,
              const std::optional<QRegion>& native) {
    if (!window || !qt.extensions().shape)
        return;
    if (!native) {
        xcb_shape_mask(qt.raw(), XCB_SHAPE_SO_SET, kind, window, 0, 0, XCB_PIXMAP_NONE);
        return;
    }
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect& r : *native)
        rectangles.push_back({static_cast<std::int16_t>(r.x()), static_cast<std::int16_t>(r.y()),
                              static_cast<std::uint16_t>(r.width()), static_cast<std::uint16_t>(r.height())});
    xcb_shape_rectangles(qt.raw(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, window, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

} // namespace

xcb_window_t windowOf(const QWidget* widget) {
    return widget ? static_cast<xcb_window_t>(widget->internalWinId())
                  : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

QRect nativeFrame(const QWidget& widget) {
    const QScreen* screen = widget.screen();
    if (!screen)
        return widget.geometry();
    // Screen origins are native already; only distances within a screen are scaled.
    const QPoint origin = screen->geometry().topLeft();
    const double scale = screen->devicePixelRatio();
    const QPointF local = QPointF(widget.geometry().topLeft() - origin) * scale;
    return {origin + local.toPoint(), (QSizeF(widget.size()) * scale).toSize()};
}

void clearToTransparent(const Connection& qt, xcb_window_t window) {
    if (!window)
        return;
    const xcb_gcontext_t context = xcb_generate_id(qt.raw());
    const std::uint32_t transparent = 0;
    const xcb_rectangle_t all = {0, 0, everything, everything};
    xcb_create_gc(qt.raw(), context, window, XCB_GC_FOREGROUND, &transparent);
    xcb_poly_fill_rectangle(qt.raw(), window, context, 1, &all);
    xcb_free_gc(qt.raw(), context);
}

void moveOff(const Connection& qt, const QWidget& widget) {
    const xcb_window_t window = windowOf(&widget);
    if (!window)
        return;
    const auto x = static_cast<std::uint32_t>(-nativeFrame(widget).width() - clearance);
    xcb_configure_window(qt.raw(), window, XCB_CONFIG_WINDOW_X, &x);
}

void setUntilPainted(const Connection& qt, xcb_window_t window, UntilPainted look) {
    if (!window)
        return;
    const std::uint32_t value = look == UntilPainted::Transparent ? 0 : XCB_BACK_PIXMAP_NONE;
    const auto attribute = look == UntilPainted::Transparent ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP;
    xcb_change_window_attributes(qt.raw(), window, attribute, &value);
}

void setInputShape(const Connection& qt, xcb_window_t window, const std::optional<QRegion>& native) {
    setShape(qt, window, XCB_SHAPE_SK_INPUT, native);
}

void setBoundingShape(const Connection& qt, xcb_window_t window, const std::optional<QRegion>& native) {
    setShape(qt, window, XCB_SHAPE_SK_BOUNDING, native);
}

void raise(const Connection& qt, xcb_window_t window) {
    if (!window)
        return;
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(qt.raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void disclaimShadow(const Connection& qt, xcb_window_t window) {
    const xcb_atom_t property = qt.atom(Atom::ComptonShadow);
    if (!window || property == XCB_ATOM_NONE)
        return;
    const std::uint32_t none = 0;
    xcb_change_property(qt.raw(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL, 32, 1, &none);
}

QRegion toNative(const QRegion& points, double scale) {
    if (scale == 1)
        return points;
    QRegion native;
    for (const QRect& r : points) {
        const int left = static_cast<int>(std::floor(r.x() * scale));
        const int top = static_cast<int>(std::floor(r.y() * scale));
        const int right = static_cast<int>(std::ceil((r.x() + r.width()) * scale));
        const int bottom = static_cast<int>(std::ceil((r.y() + r.height()) * scale));
        native += QRect(left, top, right - left, bottom - top);
    }
    return native;
}

} // namespace marrowfin::x11
