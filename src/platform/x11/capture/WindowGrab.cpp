#include "platform/x11/capture/WindowGrab.h"

#include "platform/x11/capture/DecorationStrips.h"
#include "platform/x11/capture/SettledWindow.h"
#include "platform/x11/layout/WindowQuery.h"

#include <QRegion>
#include <algorithm>
#include <cstring>
#include <span>
#include <xcb/composite.h>
#include <xcb/shape.h>

namespace marrowfin::x11 {

namespace {

QRect outerRect(const xcb_get_geometry_reply_t& geometry) {
    return {geometry.x, geometry.y, geometry.width + 2 * geometry.border_width,
            geometry.height + 2 * geometry.border_width};
}

} // namespace

WindowGrab::WindowGrab(Grabber& grabber, xcb_window_t client)
    : grabber(grabber), connection(grabber.server()), client(client), frame(topLevelOf(connection, client)) {}

WindowGrab::~WindowGrab() {
    if (!redirected)
        return;
    connection.ignore(
        xcb_composite_unredirect_window_checked(connection.raw(), frame, XCB_COMPOSITE_REDIRECT_AUTOMATIC));
    connection.flush();
}

Result<QImage> WindowGrab::grab(WithCursor withCursor) {
    const auto gone = [this] {
        return connection.isLost() ? failure(QStringLiteral("The connection to the X server is lost."))
                                   : failure(QStringLiteral("The window is gone."));
    };
    const std::vector<WindowFacts> facts = readWindows(connection, {client});
    if (facts.empty())
        return gone();
    if (!facts.front().viewable)
        return failure(QStringLiteral("The window isn't on the screen, so there is nothing to capture."));
    const auto place = placeOfFrame();
    if (!place)
        return gone();
    area = visibleFrame(facts.front()).intersected(place->outer);
    if (area.isEmpty())
        return failure(QStringLiteral("The window has no size."));
    Result<QImage> picture = pixels(*place);
    if (picture && connection.extensions().composite && decorationsAreDrawnApart(connection))
        decorate(*picture, facts.front());
    if (!picture && readWindows(connection, {client}).empty())
        return gone();
    if (picture)
        cutToShape(*picture, *place);
    if (picture && picture->isNull())
        return failure(QStringLiteral("There is not enough memory for the window."));
    if (picture && withCursor == WithCursor::Yes)
        blendCursor(*picture, area.topLeft(), grabber.cursor());
    return picture;
}

std::optional<WindowGrab::Place> WindowGrab::placeOfFrame() {
    const auto geometryCookie = xcb_get_geometry(connection.raw(), frame);
    const auto attributesCookie = xcb_get_window_attributes(connection.raw(), frame);
    const auto geometry = connection.reply(xcb_get_geometry_reply, geometryCookie);
    const auto attributes = connection.reply(xcb_get_window_attributes_reply, attributesCookie);
    if (!geometry || !attributes)
        return std::nullopt;
    const QPoint inside(geometry->x + geometry->border_width, geometry->y + geometry->border_width);
    return Place{outerRect(*geometry), inside, grabber.layoutOf(attributes->visual)};
}

Result<QImage> WindowGrab::pixels(const Place& place) {
    if (connection.extensions().composite) {
        if (QImage picture = fromPixmap(place); !picture.isNull())
            return picture;
        if (const QRegion hidden = covered(area); !hidden.isEmpty()) {
            keepOffScreen(hidden);
            if (QImage picture = fromPixmap(place); !picture.isNull())
                return picture;
        }
    }
    return fromScreen();
}

// What nothing covers, before and after, since windows come and go; the rest is transparent, never another
// window's.
Result<QImage> WindowGrab::fromScreen() {
    QRegion hidden = covered(area);
    Result<QImage> picture = grabber.grabScreen(area, WithCursor::No);
    hidden += covered(area);
    if (!picture || hidden.isEmpty())
        return picture;
    *picture = picture->convertToFormat(QImage::Format_ARGB32_Premultiplied);
    clearIn(*picture, hidden, area.topLeft());
    return picture;
}

// Null when nobody keeps the window's picture.
QImage WindowGrab::fromPixmap(const Place& place) {
    const xcb_pixmap_t pixmap = xcb_generate_id(connection.raw());
    if (connection.check(xcb_composite_name_window_pixmap_checked(connection.raw(), frame, pixmap)) != 0)
        return {};
    auto picture = grabber.grabDrawable(pixmap, area.translated(-place.outer.topLeft()), place.layout);
    connection.ignore(xcb_free_pixmap_checked(connection.raw(), pixmap));
    connection.flush();
    return picture ? *std::move(picture) : QImage();
}

// Where a window manager cuts the corners off its frames the picture has what the server kept there, which is
// black or of another window.
void WindowGrab::cutToShape(QImage& picture, const Place& place) const {
    if (!connection.extensions().shape)
        return;
    const auto shape =
        connection.reply(xcb_shape_get_rectangles_reply,
                         xcb_shape_get_rectangles(connection.raw(), frame, XCB_SHAPE_SK_BOUNDING));
    if (!shape)
        return;
    const xcb_rectangle_t* first = xcb_shape_get_rectangles_rectangles(shape.get());
    const std::span parts(first,
                          static_cast<std::size_t>(xcb_shape_get_rectangles_rectangles_length(shape.get())));
    const QPoint shift = place.inside - area.topLeft();
    const auto inPicture = [&](const xcb_rectangle_t& part) {
        return QRect(part.x, part.y, part.width, part.height).translated(shift).intersected(picture.rect());
    };
    if (parts.size() == 1 && inPicture(parts.front()) == picture.rect())
        return;
    // Part by part: a shape may have as many as the window has pixels, and they don't overlap.
    const QImage whole = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage cut(whole.size(), whole.format());
    if (whole.isNull() || cut.isNull()) {
        picture = {};
        return;
    }
    cut.fill(Qt::transparent);
    for (const xcb_rectangle_t& part : parts) {
        const QRect kept = inPicture(part);
        for (int y = kept.top(); y < kept.top() + kept.height(); ++y)
            std::memcpy(cut.scanLine(y) + 4 * kept.x(), whole.constScanLine(y) + 4 * kept.x(),
                        static_cast<std::size_t>(kept.width()) * 4);
    }
    picture = cut;
}

// The strips as the screen shows them, where it has the window's own pixels.
void WindowGrab::decorate(QImage& picture, const WindowFacts& window) {
    const QRegion strips = decorationStrips(window, area);
    if (strips.isEmpty())
        return;
    const QRegion corners = outsideOfCorners(window, area);
    picture = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    clearIn(picture, strips + corners, area.topLeft());
    if (const auto screen = fromScreen())
        copyInto(picture, screen->convertToFormat(QImage::Format_ARGB32_Premultiplied), strips - corners,
                 area.topLeft());
}

// What of the area can't be seen on the screen now. Shapes of the windows above count as their rectangles: at
// worst the slower way is taken for nothing.
QRegion WindowGrab::covered(const QRect& visible) const {
    const auto rootCookie = xcb_get_geometry(connection.raw(), connection.root());
    const std::vector<xcb_window_t> stack = rootChildren(connection);
    const auto root = connection.reply(xcb_get_geometry_reply, rootCookie);
    QRegion hidden(visible);
    if (root)
        hidden -= outerRect(*root);
    const auto own = std::find(stack.begin(), stack.end(), frame);
    if (own == stack.end())
        return hidden;
    struct Cookies {
        xcb_get_geometry_cookie_t geometry;
        xcb_get_window_attributes_cookie_t attributes;
    };
    std::vector<Cookies> asked;
    for (auto above = own + 1; above != stack.end(); ++above)
        asked.push_back({xcb_get_geometry(connection.raw(), *above),
                         xcb_get_window_attributes(connection.raw(), *above)});
    for (const Cookies& cookies : asked) {
        const auto geometry = connection.reply(xcb_get_geometry_reply, cookies.geometry);
        const auto attributes = connection.reply(xcb_get_window_attributes_reply, cookies.attributes);
        if (geometry && attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            hidden += outerRect(*geometry).intersected(visible);
    }
    return hidden;
}

void WindowGrab::keepOffScreen(const QRegion& exposed) {
    if (redirected)
        return;
    SettledWindow settled(grabber, client, frame, area);
    redirected = connection.check(xcb_composite_redirect_window_checked(
                     connection.raw(), frame, XCB_COMPOSITE_REDIRECT_AUTOMATIC)) == 0;
    if (redirected)
        settled.wait(exposed);
}

} // namespace marrowfin::x11
