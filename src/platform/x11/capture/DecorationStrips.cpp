#include "platform/x11/capture/DecorationStrips.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace marrowfin::x11 {

namespace {

QByteArray windowManagerName(const Connection& c, xcb_window_t own) {
    const auto name =
        c.reply(xcb_get_property_reply,
                xcb_get_property(c.raw(), 0, own, c.atom(Atom::NetWmName), c.atom(Atom::Utf8String), 0, 16));
    return items8(name.get());
}

// Of the two top corners, and of the bottom ones where there is a border to be round.
QRegion outsideOfCorner(const QPoint& corner, int radius, int right, int down) {
    QRegion outside;
    for (int row = 0; row < radius; ++row) {
        const double way = radius - row - 0.5;
        const int cut = static_cast<int>(std::ceil(radius - std::sqrt(radius * radius - way * way)));
        const int x = right > 0 ? corner.x() : corner.x() - cut;
        const int y = down > 0 ? corner.y() + row : corner.y() - row - 1;
        outside += QRect(x, y, cut, 1);
    }
    return outside;
}

} // namespace

bool decorationsAreDrawnApart(const Connection& c) {
    const xcb_window_t compositor = c.compositor();
    if (!compositor)
        return false;
    const auto check = c.property32(c.root(), c.atom(Atom::NetSupportingWmCheck), XCB_ATOM_WINDOW);
    if (check.empty() || windowManagerName(c, check.front()) != "KWin")
        return false;
    // With another program's compositor it draws into its frames.
    const std::uint32_t client = ~xcb_get_setup(c.raw())->resource_id_mask;
    return (compositor & client) == (check.front() & client);
}

QRegion decorationStrips(const WindowFacts& window, const QRect& area) {
    if (window.frameExtents.isNull())
        return {};
    const QMargins border(window.border, window.border, window.border, window.border);
    return QRegion(area) - QRegion(window.client.marginsAdded(border));
}

QRegion outsideOfCorners(const WindowFacts& window, const QRect& area) {
    const QMargins& extents = window.frameExtents;
    const int radius = std::min({(extents.top() + 4) / 5, area.width() / 2, area.height() / 2});
    if (radius <= 0)
        return {};
    const QPoint left = area.topLeft();
    const QPoint right(area.x() + area.width(), area.y());
    QRegion outside = outsideOfCorner(left, radius, 1, 1) + outsideOfCorner(right, radius, -1, 1);
    if (extents.bottom() > 0) {
        const QPoint down(0, area.height());
        outside += outsideOfCorner(left + down, radius, 1, -1);
        outside += outsideOfCorner(right + down, radius, -1, -1);
    }
    return outside;
}

void copyInto(QImage& picture, const QImage& other, const QRegion& region, const QPoint& corner) {
    for (const QRect& part : region.translated(-corner) & picture.rect() & other.rect()) {
        for (int y = part.top(); y <= part.bottom(); ++y)
            std::memcpy(picture.scanLine(y) + 4 * part.x(), other.constScanLine(y) + 4 * part.x(),
                        static_cast<std::size_t>(part.width()) * 4);
    }
}

void clearIn(QImage& picture, const QRegion& region, const QPoint& corner) {
    for (const QRect& part : region.translated(-corner) & picture.rect()) {
        for (int y = part.top(); y <= part.bottom(); ++y)
            std::memset(picture.scanLine(y) + 4 * part.x(), 0, static_cast<std::size_t>(part.width()) * 4);
    }
}

} // namespace marrowfin::x11
