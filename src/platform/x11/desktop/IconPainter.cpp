#include "platform/x11/desktop/IconPainter.h"

#include <QPoint>

namespace marrowfin::x11 {

namespace {

// The one format that a QImage of premultiplied 32-bit words has.
bool isWordsWithAlpha(const xcb_render_pictforminfo_t& format) {
    const xcb_render_directformat_t& parts = format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == 32 && parts.alpha_shift == 24 &&
           parts.alpha_mask == 0xFF && parts.red_shift == 16 && parts.red_mask == 0xFF &&
           parts.green_shift == 8 && parts.green_mask == 0xFF && parts.blue_shift == 0 &&
           parts.blue_mask == 0xFF;
}

} // namespace

IconPainter::IconPainter(const Connection& connection) : connection(connection) {
    const xcb_query_extension_reply_t* render = xcb_get_extension_data(connection.raw(), &xcb_render_id);
    if (!render || !render->present)
        return;
    const auto version =
        connection.reply(xcb_render_query_version_reply, xcb_render_query_version(connection.raw(), 0, 11));
    const auto formats = connection.reply(xcb_render_query_pict_formats_reply,
                                          xcb_render_query_pict_formats(connection.raw()));
    if (version && formats)
        readFormats(*formats);
}

void IconPainter::readFormats(const xcb_render_query_pict_formats_reply_t& formats) {
    for (auto format = xcb_render_query_pict_formats_formats_iterator(&formats); format.rem > 0;
         xcb_render_pictforminfo_next(&format))
        if (withAlpha == 0 && isWordsWithAlpha(*format.data))
            withAlpha = format.data->id;
    for (auto screen = xcb_render_query_pict_formats_screens_iterator(&formats); screen.rem > 0;
         xcb_render_pictscreen_next(&screen))
        for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem > 0;
             xcb_render_pictdepth_next(&depth))
            for (auto visual = xcb_render_pictdepth_visuals_iterator(depth.data); visual.rem > 0;
                 xcb_render_pictvisual_next(&visual))
                ofVisual.emplace(visual.data->visual, visual.data->format);
}

bool IconPainter::hasAlpha(xcb_visualid_t visual) const {
    const auto format = ofVisual.find(visual);
    return withAlpha != 0 && format != ofVisual.end() && format->second == withAlpha;
}

xcb_render_picture_t IconPainter::uploaded(const QImage& picture) const {
    xcb_connection_t* server = connection.raw();
    const auto width = static_cast<std::uint16_t>(picture.width());
    const auto height = static_cast<std::uint16_t>(picture.height());
    const xcb_pixmap_t pixmap = xcb_generate_id(server);
    const xcb_gcontext_t context = xcb_generate_id(server);
    const xcb_render_picture_t made = xcb_generate_id(server);
    connection.ignore(xcb_create_pixmap_checked(server, 32, pixmap, connection.root(), width, height));
    connection.ignore(xcb_create_gc_checked(server, context, pixmap, 0, nullptr));
    connection.ignore(xcb_put_image_checked(server, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height,
                                            0, 0, 0, 32, static_cast<std::uint32_t>(picture.sizeInBytes()),
                                            picture.constBits()));
    connection.ignore(xcb_render_create_picture_checked(server, made, pixmap, withAlpha, 0, nullptr));
    connection.ignore(xcb_free_gc_checked(server, context));
    // The picture keeps it.
    connection.ignore(xcb_free_pixmap_checked(server, pixmap));
    return made;
}

void IconPainter::paint(xcb_window_t window, xcb_visualid_t visual, const QImage& picture,
                        const QPoint& place) const {
    const auto format = ofVisual.find(visual);
    if (withAlpha == 0 || format == ofVisual.end() || picture.isNull())
        return;
    xcb_connection_t* server = connection.raw();
    const QImage words = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const xcb_render_picture_t source = uploaded(words);
    const xcb_render_picture_t target = xcb_generate_id(server);
    connection.ignore(xcb_clear_area_checked(server, 0, window, 0, 0, 0, 0));
    connection.ignore(xcb_render_create_picture_checked(server, target, window, format->second, 0, nullptr));
    connection.ignore(xcb_render_composite_checked(
        server, XCB_RENDER_PICT_OP_OVER, source, XCB_RENDER_PICTURE_NONE, target, 0, 0, 0, 0,
        static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
        static_cast<std::uint16_t>(words.width()), static_cast<std::uint16_t>(words.height())));
    connection.ignore(xcb_render_free_picture_checked(server, target));
    connection.ignore(xcb_render_free_picture_checked(server, source));
    connection.flush();
}

} // namespace marrowfin::x11
