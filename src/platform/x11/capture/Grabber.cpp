#include "platform/x11/capture/Grabber.h"

#include "base/Log.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <xcb/shm.h>
#include <xcb/xfixes.h>

namespace marrowfin::x11 {

namespace {

constexpr std::uint32_t allPlanes = 0xFFFFFFFF;

CursorPicture pictureFrom(const xcb_xfixes_get_cursor_image_reply_t* reply) {
    if (!reply || reply->width == 0 || reply->height == 0)
        return {};
    CursorPicture cursor;
    cursor.pixels = QImage(reply->width, reply->height, QImage::Format_ARGB32_Premultiplied);
    if (cursor.pixels.isNull())
        return {};
    std::memcpy(cursor.pixels.bits(), xcb_xfixes_get_cursor_image_cursor_image(reply),
                static_cast<std::size_t>(cursor.pixels.sizeInBytes()));
    cursor.corner = QPoint(reply->x - reply->xhot, reply->y - reply->yhot);
    cursor.serial = reply->cursor_serial;
    return cursor;
}

// The protocol's coordinates have 16 bits.
bool fitsRequest(const QRect& rect) {
    constexpr int most = 0x7FFF;
    return rect.x() >= -most && rect.y() >= -most && rect.x() <= most && rect.y() <= most &&
           rect.width() <= most && rect.height() <= most;
}

void freeReply(void* reply) {
    std::free(reply);
}

} // namespace

Grabber::Grabber(Connection& connection, SegmentPool::Reuse reuse)
    : connection(connection), pool(std::make_shared<SegmentPool>(reuse)), strips(connection),
      rootLayout(layoutOf(connection.screen().root_visual)) {}

Grabber::~Grabber() {
    pool->close();
}

PixelLayout Grabber::layoutOf(xcb_visualid_t visual) const {
    PixelLayout layout;
    const xcb_setup_t* setup = xcb_get_setup(connection.raw());
    layout.byteOrder = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST
                           ? PixelLayout::ByteOrder::LeastFirst
                           : PixelLayout::ByteOrder::MostFirst;
    for (auto depth = xcb_screen_allowed_depths_iterator(&connection.screen()); depth.rem > 0;
         xcb_depth_next(&depth)) {
        for (auto it = xcb_depth_visuals_iterator(depth.data); it.rem > 0; xcb_visualtype_next(&it)) {
            if (it.data->visual_id != visual)
                continue;
            layout.depth = depth.data->depth;
            layout.red = it.data->red_mask;
            layout.green = it.data->green_mask;
            layout.blue = it.data->blue_mask;
        }
    }
    for (auto it = xcb_setup_pixmap_formats_iterator(setup); it.rem > 0; xcb_format_next(&it)) {
        if (it.data->depth != layout.depth)
            continue;
        layout.bitsPerPixel = it.data->bits_per_pixel;
        layout.scanlinePad = it.data->scanline_pad;
    }
    return layout;
}

Result<QImage> Grabber::grabScreen(const QRect& rect, WithCursor withCursor) {
    if (rect.isEmpty())
        return failure(QStringLiteral("There is nothing to capture in an empty area."));
    const bool wantsCursor = withCursor == WithCursor::Yes && connection.extensions().xfixes;
    // Asked before the pixels and read after them: one round trip, and cursor and pixels of the same moment.
    const auto cursorCookie =
        wantsCursor ? xcb_xfixes_get_cursor_image(connection.raw()) : xcb_xfixes_get_cursor_image_cookie_t{};
    auto picture = grabDrawable(connection.root(), rect, rootLayout);
    if (!picture && !connection.isLost()) {
        // The server refuses a rectangle that sticks out of the root.
        QImage black = assembled(rect);
        if (!black.isNull())
            picture = std::move(black);
    }
    cursorDrawn = {};
    if (wantsCursor) {
        const auto reply = connection.reply(xcb_xfixes_get_cursor_image_reply, cursorCookie);
        const CursorPicture drawn = pictureFrom(reply.get());
        cursorDrawn = drawn.rect();
        if (picture)
            blendCursor(*picture, rect.topLeft(), drawn);
    }
    return picture;
}

Result<QImage> Grabber::grabDrawable(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout) {
    QImage picture;
    if (!fitsRequest(rect))
        return failure(QStringLiteral("The area is too large."));
    if (connection.extensions().shm)
        picture = pool->reuses() || !layout.isImageMemory() ? grabShared(drawable, rect, layout)
                                                            : grabStill(drawable, rect, layout);
    if (picture.isNull())
        picture = grabPlain(drawable, rect, layout);
    if (picture.isNull())
        return tl::unexpected(whyNot());
    return picture;
}

void Grabber::warmUp() {
    if (!connection.extensions().shm || !rootLayout.isImageMemory())
        return;
    // As much of the screen as fills the memory, so that its pages are there on both sides.
    const int width = connection.screen().width_in_pixels;
    const int rows = static_cast<int>(StripReader::capacity) / rootLayout.bytesPerLine(width);
    grabStill(connection.root(),
              QRect(0, 0, width, std::min<int>(rows, connection.screen().height_in_pixels)), rootLayout);
}

QImage Grabber::grabStill(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout) {
    if (strips.prepare())
        return strips.read(drawable, rect, layout);
    sharingRefused();
    return {};
}

// The system may have none to give now, or the server sits in another container or on another machine: the
// next picture asks again, which costs little.
void Grabber::sharingRefused() {
    if (connection.isLost() || std::exchange(toldOfRefusal, true))
        return;
    logLine(
        QStringLiteral("[Marrowfin] There is no memory to share with the X server: captures take longer."));
}

std::unique_ptr<SharedSegment> Grabber::segmentFor(std::size_t bytes, xcb_void_cookie_t* attached) {
    if (auto used = pool->take(bytes))
        return used;
    auto segment = SharedSegment::make(bytes);
    if (segment) {
        segment->serverID = xcb_generate_id(connection.raw());
        *attached = xcb_shm_attach_checked(connection.raw(), segment->serverID,
                                           static_cast<std::uint32_t>(segment->systemID()), 0);
    }
    return segment;
}

QImage Grabber::grabShared(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout) {
    const int stride = layout.bytesPerLine(rect.width());
    const std::size_t bytes = static_cast<std::size_t>(stride) * static_cast<std::size_t>(rect.height());
    xcb_void_cookie_t attached{};
    std::unique_ptr<SharedSegment> segment = segmentFor(bytes, &attached);
    if (!segment) {
        sharingRefused();
        return {};
    }
    const auto cookie = xcb_shm_get_image(
        connection.raw(), drawable, static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
        static_cast<std::uint16_t>(rect.width()), static_cast<std::uint16_t>(rect.height()), allPlanes,
        XCB_IMAGE_FORMAT_Z_PIXMAP, segment->serverID, 0);
    const bool refused = attached.sequence != 0 && connection.check(attached) != 0;
    const auto reply = connection.reply(xcb_shm_get_image_reply, cookie);
    segment->forgetName();
    if (refused)
        sharingRefused();
    if (!refused && !pool->reuses())
        letGo(*segment);
    if (!reply) {
        if (!refused)
            pool->giveBack(std::move(segment));
        return {};
    }
    if (!layout.isImageMemory()) {
        QImage converted = convertedPixels(segment->memory(), rect.size(), layout);
        pool->giveBack(std::move(segment));
        return converted;
    }
    if (layout.depth == 24)
        fillUndefinedAlpha(segment->memory(), bytes);
    return imageOver(std::move(segment), rect.size(), stride, layout.imageFormat(), pool);
}

// Sent at once: the server holds the memory until it has read this.
void Grabber::letGo(const SharedSegment& segment) {
    connection.ignore(xcb_shm_detach_checked(connection.raw(), segment.serverID));
    connection.flush();
}

QImage Grabber::grabPlain(xcb_drawable_t drawable, const QRect& rect, const PixelLayout& layout) {
    auto reply = connection.reply(xcb_get_image_reply,
                                  xcb_get_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable,
                                                static_cast<std::int16_t>(rect.x()),
                                                static_cast<std::int16_t>(rect.y()),
                                                static_cast<std::uint16_t>(rect.width()),
                                                static_cast<std::uint16_t>(rect.height()), allPlanes));
    if (!reply)
        return {};
    const int stride = layout.bytesPerLine(rect.width());
    const auto bytes = static_cast<std::size_t>(stride) * static_cast<std::size_t>(rect.height());
    if (static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < bytes)
        return {};
    std::uint8_t* pixels = xcb_get_image_data(reply.get());
    if (!layout.isImageMemory())
        return convertedPixels(pixels, rect.size(), layout);
    if (layout.depth == 24)
        fillUndefinedAlpha(pixels, bytes);
    return {pixels, rect.width(), rect.height(), stride, layout.imageFormat(), freeReply, reply.release()};
}

// The part inside the root on black; null when the root itself can't be read.
QImage Grabber::assembled(const QRect& rect) {
    const auto geometry =
        connection.reply(xcb_get_geometry_reply, xcb_get_geometry(connection.raw(), connection.root()));
    if (!geometry)
        return {};
    const QRect root(0, 0, geometry->width, geometry->height);
    if (root.contains(rect))
        return {}; // it wasn't the place that the server refused
    QImage canvas(rect.size(), QImage::Format_RGB32);
    if (canvas.isNull())
        return canvas;
    canvas.fill(Qt::black);
    const QRect inside = rect.intersected(root);
    if (inside.isEmpty())
        return canvas;
    const auto part = grabDrawable(connection.root(), inside, rootLayout);
    if (!part)
        return {};
    const QPoint shift = inside.topLeft() - rect.topLeft();
    for (int y = 0; y < part->height(); ++y)
        std::memcpy(canvas.scanLine(y + shift.y()) + 4 * shift.x(), part->constScanLine(y),
                    static_cast<std::size_t>(part->width()) * 4);
    return canvas;
}

CursorPicture Grabber::cursor() {
    if (!connection.extensions().xfixes)
        return {};
    return pictureFrom(
        connection.reply(xcb_xfixes_get_cursor_image_reply, xcb_xfixes_get_cursor_image(connection.raw()))
            .get());
}

Error Grabber::whyNot() const {
    if (connection.isLost())
        return {Error::Kind::Failed, QStringLiteral("The connection to the X server is lost.")};
    return {Error::Kind::Failed, QStringLiteral("The X server didn't give the pixels.")};
}

} // namespace marrowfin::x11
