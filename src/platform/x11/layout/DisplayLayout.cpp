#include "platform/x11/layout/DisplayLayout.h"

#include <algorithm>
#include <array>
#include <limits>

namespace marrowfin::x11 {

namespace {

double area(const QRectF& a, const QRectF& b) {
    const auto common = intersection(a, b);
    return common ? common->width() * common->height() : 0;
}

QRect bandOf(const Strut& strut, const QSize& root) {
    const int length = strut.end - strut.start + 1;
    switch (strut.edge) {
    case Strut::Edge::Left:
        return {0, strut.start, strut.thickness, length};
    case Strut::Edge::Right:
        return {root.width() - strut.thickness, strut.start, strut.thickness, length};
    case Strut::Edge::Top:
        return {strut.start, 0, length, strut.thickness};
    case Strut::Edge::Bottom:
        return {strut.start, root.height() - strut.thickness, length, strut.thickness};
    }
    return {};
}

int clamped(std::uint32_t number, int highest) {
    return static_cast<int>(
        std::min<std::uint32_t>(number, static_cast<std::uint32_t>(std::max(highest, 0))));
}

} // namespace

double NativeDisplay::scale() const {
    return points.width() > 0 ? static_cast<double>(native.width()) / points.width() : 1;
}

DisplayLayout::DisplayLayout(std::vector<NativeDisplay> displays) : all(std::move(displays)) {}

const NativeDisplay* DisplayLayout::find(std::uint32_t id) const {
    const auto at = std::find_if(all.begin(), all.end(), [id](const NativeDisplay& d) { return d.id == id; });
    return at == all.end() ? nullptr : &*at;
}

const NativeDisplay* DisplayLayout::showing(const QRect& native) const {
    const NativeDisplay* best = nullptr;
    double most = 0;
    for (const NativeDisplay& display : all) {
        const double part = area(QRectF(display.native), QRectF(native));
        if (part > most) {
            best = &display;
            most = part;
        }
    }
    return best;
}

const NativeDisplay* DisplayLayout::containing(const QPoint& native) const {
    return showing(QRect(native, QSize(1, 1)));
}

QPoint DisplayLayout::qtOrigin() const {
    return all.empty() ? QPoint() : all.front().native.topLeft();
}

double DisplayLayout::primaryHeight() const {
    return all.empty() ? 0 : all.front().points.height();
}

ScreenRect DisplayLayout::on(const NativeDisplay& display, const QRectF& native) const {
    const double scale = display.scale();
    const QPointF origin = QPointF(display.native.topLeft());
    const QPointF corner = origin - QPointF(qtOrigin()) + (native.topLeft() - origin) / scale;
    return {QRectF(corner, native.size() / scale)};
}

ScreenRect DisplayLayout::frame(const NativeDisplay& display) const {
    // Qt's own size: at a fractional scale it is rounded, and windows are placed by it.
    return {QRectF(QPointF(display.native.topLeft() - qtOrigin()), QSizeF(display.points))};
}

ScreenRect DisplayLayout::visibleFrame(const NativeDisplay& display) const {
    if (display.visible == display.native)
        return frame(display);
    return on(display, QRectF(display.visible));
}

ScreenRect DisplayLayout::toPoints(const QRect& native) const {
    if (all.empty())
        return {QRectF(native)};
    const NativeDisplay* display = showing(native);
    return on(display ? *display : all.front(), QRectF(native));
}

ScreenPoint DisplayLayout::toPoints(const QPoint& native) const {
    return {toPoints(QRect(native, QSize(1, 1))).rect.topLeft()};
}

QRect DisplayLayout::toNative(const ScreenRect& points) const {
    if (all.empty())
        return QRect();
    const NativeDisplay* best = &all.front();
    double most = 0;
    for (const NativeDisplay& display : all) {
        const double part = area(frame(display).rect, points.rect);
        if (part > most) {
            best = &display;
            most = part;
        }
    }
    const QRectF local = offset(points.rect, -frame(*best).rect.x(), -frame(*best).rect.y());
    const double scale = best->scale();
    return {best->native.x() + roundedToInt(local.x() * scale),
            best->native.y() + roundedToInt(local.y() * scale), roundedToInt(local.width() * scale),
            roundedToInt(local.height() * scale)};
}

std::vector<Strut> strutsFrom(const std::vector<std::uint32_t>& numbers, const QSize& root) {
    if (numbers.size() != 4 && numbers.size() != 12)
        return {};
    using Edge = Strut::Edge;
    constexpr std::array edges = {Edge::Left, Edge::Right, Edge::Top, Edge::Bottom};
    std::vector<Strut> struts;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        const bool upright = edges[i] == Edge::Left || edges[i] == Edge::Right;
        const int across = upright ? root.width() : root.height();
        const int along = upright ? root.height() : root.width();
        Strut strut{edges[i], clamped(numbers[i], across), 0, along - 1};
        if (numbers.size() == 12) {
            strut.start = clamped(numbers[4 + 2 * i], along - 1);
            strut.end = clamped(numbers[5 + 2 * i], along - 1);
        }
        if (strut.thickness > 0 && strut.end >= strut.start)
            struts.push_back(strut);
    }
    return struts;
}

QRect withoutStruts(const QRect& display, const QSize& root, const std::vector<Strut>& struts) {
    QRect free = display;
    for (const Strut& strut : struts) {
        const QRect taken = bandOf(strut, root).intersected(display);
        if (taken.isEmpty())
            continue;
        const bool upright = strut.edge == Strut::Edge::Left || strut.edge == Strut::Edge::Right;
        if (upright ? taken.width() == display.width() : taken.height() == display.height())
            continue;
        switch (strut.edge) {
        case Strut::Edge::Left:
            free.setLeft(std::max(free.left(), taken.right() + 1));
            break;
        case Strut::Edge::Right:
            free.setRight(std::min(free.right(), taken.left() - 1));
            break;
        case Strut::Edge::Top:
            free.setTop(std::max(free.top(), taken.bottom() + 1));
            break;
        case Strut::Edge::Bottom:
            free.setBottom(std::min(free.bottom(), taken.top() - 1));
            break;
        }
    }
    return free.isValid() ? free : display;
}

} // namespace marrowfin::x11
