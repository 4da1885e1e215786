// Where the displays are, and the one conversion between native pixels (root coordinates) and points. A
// value; any thread.
//
// The point space is the one in which Qt places windows, moved so that the primary's top left is (0, 0): Qt
// keeps every screen's origin in native pixels and divides only sizes by the scale, so a point of a display
// is origin + (native - origin) / scale. At scales above 1 there are gaps between displays, and nothing
// overlaps.
#pragma once

#include "base/Coordinates.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <cstdint>
#include <vector>

namespace marrowfin::x11 {

struct NativeDisplay {
    std::uint32_t id = 0;
    QString name;
    QRect native;
    QSize points;
    // The part of native that panels and docks leave free.
    QRect visible;

    double scale() const;
    friend bool operator==(const NativeDisplay&, const NativeDisplay&) = default;
};

class DisplayLayout {
public:
    DisplayLayout() = default;
    // The primary first.
    explicit DisplayLayout(std::vector<NativeDisplay> displays);

    const std::vector<NativeDisplay>& displays() const { return all; }
    // Null when there is no display of this id.
    const NativeDisplay* find(std::uint32_t id) const;
    // The display that shows the largest part of a native rectangle, the earlier one at a tie; null when none
    // does.
    const NativeDisplay* showing(const QRect& native) const;
    const NativeDisplay* containing(const QPoint& native) const;

    // What to add to a ScreenPoint to get Qt's global coordinate of the same place.
    QPoint qtOrigin() const;
    double primaryHeight() const;
    ScreenRect frame(const NativeDisplay& display) const;
    ScreenRect visibleFrame(const NativeDisplay& display) const;

    // By the scale of the display that shows most of it, else the primary's.
    ScreenRect toPoints(const QRect& native) const;
    ScreenPoint toPoints(const QPoint& native) const;
    // Of the display whose frame holds the largest part, else the primary; edges are rounded like sizes.
    QRect toNative(const ScreenRect& points) const;

    friend bool operator==(const DisplayLayout&, const DisplayLayout&) = default;

private:
    ScreenRect on(const NativeDisplay& display, const QRectF& native) const;

    std::vector<NativeDisplay> all;
};

// A band along one edge of the root that a panel keeps for itself, in native pixels of the root.
struct Strut {
    enum class Edge { Left, Right, Top, Bottom };
    Edge edge = Edge::Top;
    int thickness = 0;
    // First and last pixel along the edge, both inside.
    int start = 0;
    int end = 0;
    friend bool operator==(const Strut&, const Strut&) = default;
};

// From the 12 numbers of _NET_WM_STRUT_PARTIAL or the 4 of _NET_WM_STRUT; edges without a band are left out.
std::vector<Strut> strutsFrom(const std::vector<std::uint32_t>& numbers, const QSize& root);
// A band that would swallow a display across belongs to a panel on a display further in, and is not this
// one's.
QRect withoutStruts(const QRect& display, const QSize& root, const std::vector<Strut>& struts);

} // namespace marrowfin::x11
